// How a connection begins: capabilities, the account, the name. Ends when the server welcomes.
#pragma once

#include "irc/connection/irc_capabilities.h"
#include "irc/connection/irc_nick_choice.h"

#include <functional>
#include <string>
#include <string_view>

namespace larkspin {

struct IrcMessage;

struct IrcIdentity {
    std::string nick;
    std::string account{}, password{}; // blank without one; only ever sent over TLS, by SASL PLAIN
};

class IrcRegistration {
public:
    using Send = std::function<void(const std::string& line)>;
    using Tell = std::function<void(const std::string& text)>; // what the owner should know

    IrcRegistration(IrcIdentity identity, bool encrypted, Send send, Tell tell);

    // The first lines: CAP LS 302, NICK, USER.
    void begin();

    // Takes CAP, AUTHENTICATE, the welcome, the refusals of names and of what it asks for, and what
    // is said of the login. However a login ends, the connection
    // goes on.
    void take(const IrcMessage& message);

    bool isDone() const { return phase_ == Phase::done; }

    // The name that the server knows this connection by, once that is done.
    const std::string& nick() const { return nick_; }

    // What the server can do, which may change after the registration, too.
    const IrcCapabilities& capabilities() const { return capabilities_; }

private:
    enum class Phase { listing, requesting, loggingIn, ended, done };
    enum class Login { none, impossible, wanted, sent };

    void takeUnknown(std::string_view command);
    void welcome(const IrcMessage& message);
    void askAnew(bool hasAnother);

    void takeCapabilities(const IrcMessage& message);
    void goOn();
    void endCapabilities();

    void sendLogin(std::string_view challenge);
    void takeLoginAnswer(const IrcMessage& message);
    void failLogin(std::string_view why);

    IrcIdentity identity_;
    Send send_;
    Tell tell_;
    IrcNickChoice choice_;
    std::string nick_;
    IrcCapabilities capabilities_;
    Phase phase_ = Phase::listing;
    Login login_ = Login::none;
    bool hasGivenUp_ = false;
};

} // namespace larkspin
