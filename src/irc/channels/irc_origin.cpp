#include "irc/channels/irc_origin.h"

#include "irc/protocol/irc_message.h"
#include "irc/protocol/irc_numerics.h"
#include "text/parts.h"

namespace larkspin {

namespace {

constexpr std::string_view noAccount = "*";

// "JOIN #music account :real name" where the server tells of accounts.
std::string_view accountIn(const IrcMessage& message) {
    const std::size_t told = message.command == "ACCOUNT" ? 0 : 1;
    const bool tells = message.command == "ACCOUNT" ||
                       (message.command == "JOIN" && message.parameters.size() > 2);
    return tells ? message.parameter(told) : message.tag("account");
}

} // namespace

IrcOrigin readIrcOrigin(std::string_view mask) {
    const auto [nick, rest, hasMore] = partedAt(mask, '!');
    const auto [user, host, hasHost] = partedAt(rest, '@');
    return hasHost ? IrcOrigin{nick, user, host, {}} : IrcOrigin{nick, {}, {}, {}};
}

std::optional<IrcOrigin> originIn(const IrcMessage& message) {
    const auto word = [&](std::size_t number) { return message.parameter(number); };
    if (message.command == numeric::who)
        return IrcOrigin{word(5), word(2), word(3), {}};
    if (message.command == numeric::whoWithFields) {
        if (word(1) != whoToken)
            return std::nullopt;
        return IrcOrigin{word(4), word(2), word(3), word(5) == "0" ? noAccount : word(5)};
    }
    if (numeric::isNumeric(message.command))
        return std::nullopt;
    if (message.command == "CHGHOST")
        return IrcOrigin{message.nick(), word(0), word(1), message.tag("account")};
    IrcOrigin origin = readIrcOrigin(message.sender);
    if (message.command == "NICK")
        origin.nick = word(0);
    origin.account = accountIn(message);
    return origin;
}

} // namespace larkspin
