#include "platform/irc/irc_speech.h"

#include "platform/irc/irc_markup.h"
#include "platform/irc/irc_message.h"
#include "platform/irc/irc_pieces.h"
#include "platform/irc/irc_session.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

// Others get a line with its sender in front: of the name that the server gives him, at most.
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
    for (std::size_t piece = 0; piece < pieces.size(); ++piece) {
        const bool isLast = piece + 1 == pieces.size();
        if (!session_.send(kind, ircLine("PRIVMSG", {said.channel, pieces[piece]}),
                           [this, said, codes = pieces[piece], isLast, isDue = !isAtOnce] {
                               pieceGone(said, codes, isLast, isDue);
                           }))
            return false;
    }
    if (isAtOnce && !pieces.empty())
        reached_(said, true);
    return !pieces.empty();
}

// Whether lines are sent back may have changed since it was said.
void IrcSpeech::pieceGone(const IrcSaid& said, const std::string& codes, bool isLast, bool isDue) {
    if (session_.echoes())
        await({said.channel, codes, loop_.now(), isLast && isDue, said});
    else if (isLast && isDue)
        reached_(said, false);
}

void IrcSpeech::await(Awaited awaited) {
    awaited_.push_back(std::move(awaited));
    if (awaited_.size() > mostEchoes)
        awaited_.pop_front();
}

bool IrcSpeech::whisper(const std::string& name, const std::string& text) {
    const auto pieces = ircPieces(ircCodes(text), longestPiece(name));
    return std::ranges::all_of(pieces, [&](const std::string& piece) {
        return session_.send(IrcOutgoing::Kind::typed, ircLine("PRIVMSG", {name, piece}));
    });
}

// A channel may be without colours.
bool IrcSpeech::isThat(const Awaited& awaited, std::string_view channel,
                       std::string_view codes) const {
    return session_.isSame(awaited.channel, channel) &&
           (awaited.codes == codes || withoutIrcCodes(awaited.codes) == withoutIrcCodes(codes));
}

bool IrcSpeech::take(std::string_view channel, std::string_view codes) {
    while (!awaited_.empty() && loop_.now() - awaited_.front().sentAt > longestEcho)
        awaited_.pop_front();
    const auto found = std::ranges::find_if(
        awaited_, [&](const Awaited& awaited) { return isThat(awaited, channel, codes); });
    if (found == awaited_.end())
        return false;
    const Awaited echoed = std::move(*found);
    awaited_.erase(awaited_.begin(), found + 1);
    if (echoed.isLast)
        reached_(echoed.said, false);
    return true;
}

} // namespace larkspin
