#include "irc/talk/irc_speech.h"

#include "irc/connection/irc_session.h"
#include "irc/protocol/irc_markup.h"
#include "irc/protocol/irc_message.h"
#include "irc/protocol/irc_pieces.h"
#include "text/blanks.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

// In bytes. Others get a line with its sender in front, whose user name and host take so much at
// most.
constexpr std::size_t longestLine = 510, longestUserAndHost = 1 + 20 + 1 + 64;
constexpr std::size_t shortestPiece = 64;

} // namespace

IrcSpeech::IrcSpeech(EventLoop& loop, IrcSession& session, Reached reached)
    : loop_(loop), session_(session), reached_(std::move(reached)) {}

std::size_t IrcSpeech::longestPiece(const std::string& target) const {
    const std::size_t around = std::string_view(":  PRIVMSG  :").size() + session_.nick().size() +
                               longestUserAndHost + target.size();
    return around + shortestPiece < longestLine ? longestLine - around : shortestPiece;
}

bool IrcSpeech::say(IrcOutgoing::Kind kind, const IrcSaid& said) {
    if (!session_.isWelcomed())
        return false;
    const auto pieces = ircPieces(ircCodes(said.text), longestPiece(said.channel));
    const bool isAtOnce = kind == IrcOutgoing::Kind::typed && !session_.echoes();
    for (const std::string& piece : pieces) {
        // A line in several pieces counts as said with the last one.
        const bool isDue = !isAtOnce && &piece == &pieces.back();
        const Piece sent{piece, isDue ? said : IrcSaid{.channel = said.channel}, isDue};
        if (!session_.send(kind, ircLine("PRIVMSG", {said.channel, piece}),
                           [this, sent] { gone(sent); }))
            return false;
    }
    if (isAtOnce && !pieces.empty())
        reached_(said, true);
    return true;
}

// Whether lines are sent back is asked only now, since it may have changed since the line was said.
void IrcSpeech::gone(const Piece& piece) {
    if (session_.echoes()) {
        forgetLate();
        awaited_.push_back({piece, loop_.now()});
    } else if (piece.isDue) {
        reached_(piece.said, false);
    }
}

void IrcSpeech::forgetLate() {
    while (!awaited_.empty() && loop_.now() - awaited_.front().sentAt > longestEcho)
        awaited_.pop_front();
}

bool IrcSpeech::whisper(const std::string& name, const std::string& text) {
    const auto pieces = ircPieces(ircCodes(text), longestPiece(name));
    return std::ranges::all_of(pieces, [&](const std::string& piece) {
        return session_.send(IrcOutgoing::Kind::typed, ircLine("PRIVMSG", {name, piece}));
    });
}

// Compares without codes and outer blanks as well: a channel may be without colours, and a server
// may cut off blanks.
bool IrcSpeech::isThat(const Piece& piece, std::string_view channel, std::string_view codes) const {
    const auto plain = [](std::string_view of) {
        return std::string(withoutBlanks(withoutIrcCodes(of)));
    };
    return session_.isSame(piece.said.channel, channel) &&
           (piece.codes == codes || plain(piece.codes) == plain(codes));
}

void IrcSpeech::refused(std::string_view channel) {
    const auto found = std::ranges::find_if(awaited_, [&](const Awaited& awaited) {
        return session_.isSame(awaited.piece.said.channel, channel);
    });
    if (found != awaited_.end())
        awaited_.erase(found);
}

bool IrcSpeech::take(std::string_view channel, std::string_view codes) {
    forgetLate();
    const auto found = std::ranges::find_if(
        awaited_, [&](const Awaited& awaited) { return isThat(awaited.piece, channel, codes); });
    if (found == awaited_.end())
        return false;
    const Piece echoed = std::move(found->piece);
    // Lines come back in order, so those before this one won't any more.
    awaited_.erase(awaited_.begin(), found + 1);
    if (echoed.isDue)
        reached_(echoed.said, false);
    return true;
}

} // namespace larkspin
