// What a server's message tells of where somebody comes from: his user name, host and account.
#pragma once

#include <optional>
#include <string_view>

namespace larkspin {

struct IrcMessage;

// Blank where it isn't told; the account is "*" if he has none. Views into the message.
struct IrcOrigin {
    std::string_view nick, user, host, account;
};

// "ann!user@host"; blank after the nick where there is no more.
IrcOrigin readIrcOrigin(std::string_view mask);

// Of the sender, and in answers to WHO of the one it is about. What is said in rooms isn't meant
// for this: it may be played back, and be somebody else's who had the name then.
std::optional<IrcOrigin> originIn(const IrcMessage& message);

// What is to be asked for after WHO and a nick, so that an account is told, too, and the token by
// which the answer is known.
constexpr const char* whoFields = "%tuhna,417";
constexpr std::string_view whoToken = "417";

} // namespace larkspin
