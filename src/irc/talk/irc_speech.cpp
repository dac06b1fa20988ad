#include "irc/talk/irc_speech.h"

#include "irc/channels/irc_channels.h"
#include "irc/connection/irc_session.h"
#include "irc/protocol/irc_markup.h"
#include "irc/protocol/irc_message.h"
#include "irc/protocol/irc_numerics.h"
#include "irc/protocol/irc_pieces.h"
#include "text/blanks.h"
#include "text/fold.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

// In bytes. Others get a line with its sender in front, whose user name and host take so much at
// most.
constexpr std::size_t longestLine = 510, longestUserAndHost = 1 + 20 + 1 + 64;
constexpr std::size_t shortestPiece = 64;

// What makes an action of a text ("/me waves").
constexpr std::string_view actionBegin = "\x01"
                                         "ACTION ",
                           actionEnd = "\x01";

std::string_view commandOf(const IrcSaid& said) {
    return said.kind == KeptLine::Kind::noted ? "NOTICE" : "PRIVMSG";
}

bool hasCodes(std::string_view text) {
    return withoutIrcCodes(text) != text;
}

// Servers have a number for it, or name the reason, or give no reason at all. A channel in which
// nothing may be said refuses the line once more then.
bool mayBeForCodes(const IrcMessage& refusal) {
    const std::string why = foldCase(refusal.parameters.back());
    const auto tells = [&](std::string_view of) { return why.find(of) != why.npos; };
    return refusal.command == numeric::noCodes || tells("color") || tells("colour") ||
           tells("control code") || tells("formatting") || tells("+c") ||
           (why.starts_with("cannot send to ") && !tells("("));
}

} // namespace

IrcSpeech::IrcSpeech(EventLoop& loop, IrcSession& session, IrcChannels& channels, Reached reached)
    : loop_(loop), session_(session), channels_(channels), reached_(std::move(reached)) {}

std::size_t IrcSpeech::longestPiece(const std::string& target) const {
    const std::size_t around = std::string_view(":  PRIVMSG  :").size() + session_.nick().size() +
                               longestUserAndHost + target.size();
    return around + shortestPiece < longestLine ? longestLine - around : shortestPiece;
}

std::string IrcSpeech::codesOf(const IrcSaid& said) const {
    const auto* const place = channels_.find(said.target, session_.features());
    const bool isPlain = place && place->channel.isCodeless(session_.features());
    return isPlain ? withoutIrcCodes(ircCodes(said.text)) : ircCodes(said.text);
}

bool IrcSpeech::send(IrcOutgoing::Kind kind, const Piece& piece) {
    return session_.send(kind, ircLine(commandOf(piece.said), {piece.said.target, piece.codes}),
                         [this, piece] { gone(piece); });
}

bool IrcSpeech::say(IrcOutgoing::Kind kind, const IrcSaid& said) {
    if (!session_.isWelcomed())
        return false;
    const bool isAction = said.kind == KeptLine::Kind::done;
    const std::size_t around = isAction ? actionBegin.size() + actionEnd.size() : 0;
    auto pieces = ircPieces(codesOf(said), longestPiece(said.target) - around);
    if (isAction)
        for (std::string& piece : pieces)
            piece.insert(0, actionBegin).append(actionEnd);
    const bool isAtOnce = kind == IrcOutgoing::Kind::typed && !session_.echoes();
    for (const std::string& piece : pieces) {
        // A line in several pieces counts as said with the last one.
        const bool isDue = !isAtOnce && &piece == &pieces.back();
        if (!send(kind,
                  {piece, isDue ? said : IrcSaid{.target = said.target, .kind = said.kind}, isDue}))
            return false;
    }
    if (isAtOnce && !pieces.empty())
        reached_(said, true);
    return true;
}

// Whether lines are sent back is asked only now, since it may have changed since the line was said.
void IrcSpeech::gone(const Piece& piece) {
    forgetLate();
    if (session_.echoes()) {
        awaited_.push_back({piece, loop_.now()});
        return;
    }
    if (piece.isAgain || hasCodes(piece.codes))
        coded_.push_back({{piece.codes,
                           {.target = piece.said.target, .kind = piece.said.kind},
                           false,
                           piece.isAgain},
                          loop_.now()});
    if (piece.isDue)
        reached_(piece.said, false);
}

void IrcSpeech::forgetLate() {
    while (!awaited_.empty() && loop_.now() - awaited_.front().sentAt > longestEcho)
        awaited_.pop_front();
    while (!coded_.empty() && loop_.now() - coded_.front().sentAt > longestRefusal)
        coded_.pop_front();
}

// Compares without codes and outer blanks as well: a channel may be without colours, and a server
// may cut off blanks.
bool IrcSpeech::isThat(const Piece& piece, const IrcMessage& message) const {
    const std::string_view codes = message.parameter(1);
    const auto plain = [](std::string_view of) {
        return std::string(withoutBlanks(withoutIrcCodes(of)));
    };
    return commandOf(piece.said) == message.command &&
           session_.isSame(piece.said.target, message.parameter(0)) &&
           (piece.codes == codes || plain(piece.codes) == plain(codes));
}

bool IrcSpeech::refused(const IrcMessage& refusal) {
    forgetLate();
    auto* const place = channels_.find(refusal.parameter(1), session_.features());
    std::deque<Awaited>& sent = session_.echoes() ? awaited_ : coded_;
    const auto found = std::ranges::find_if(sent, [&](const Awaited& awaited) {
        return session_.isSame(awaited.piece.said.target, refusal.parameter(1));
    });
    if (found == sent.end())
        return false;
    Piece piece = std::move(found->piece);
    sent.erase(found);
    if (!place)
        return false;
    // Refused without codes as well, so it wasn't for them.
    if (piece.isAgain)
        place->channel.refuseCodes(false);
    const std::string plain = withoutIrcCodes(piece.codes);
    if (plain == piece.codes || withoutBlanks(plain).empty() || !mayBeForCodes(refusal))
        return false;
    place->channel.refuseCodes(true);
    piece.codes = plain;
    piece.isAgain = true;
    return send(IrcOutgoing::Kind::protocol, piece); // which goes before all that waits
}

bool IrcSpeech::take(const IrcMessage& message) {
    forgetLate();
    const auto found = std::ranges::find_if(
        awaited_, [&](const Awaited& awaited) { return isThat(awaited.piece, message); });
    if (found == awaited_.end())
        return false;
    const Piece echoed = std::move(found->piece);
    const Nanoseconds sentAt = found->sentAt;
    // Lines come back in order, so those before this one won't any more.
    awaited_.erase(awaited_.begin(), found + 1);
    session_.outgoing().cameBack(sentAt);
    if (echoed.isDue)
        reached_(echoed.said, false);
    return true;
}

} // namespace larkspin
