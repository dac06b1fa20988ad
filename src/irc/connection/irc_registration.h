// How a connection begins: capabilities, the account, the name. Ends when the server welcomes.
#pragma once

#include "irc/connection/irc_capabilities.h"
#include "irc/connection/irc_identity.h"
#include "irc/connection/irc_login.h"
#include "irc/connection/irc_nick_choice.h"

#include <functional>
#include <string>
#include <string_view>

namespace larkspin {

struct IrcMessage;
struct IrcServer;

class IrcRegistration {
public:
    using Send = std::function<void(const std::string& line)>;
    using Tell = std::function<void(const std::string& text)>; // what the owner should know

    IrcRegistration(IrcIdentity identity, const IrcServer& server, Send send, Tell tell);

    // The first lines: CAP LS 302, a password of the server, NICK, USER.
    void begin();

    // Takes CAP, AUTHENTICATE, the welcome, the refusals of names and of what it asks for, and what
    // is said of the login. However a login ends, the connection goes on. False for anything else,
    // which is for the owner to read.
    bool take(const IrcMessage& message);

    bool isDone() const { return phase_ == Phase::done; }

    // The name that the server knows this connection by, once that is done; and whether it is
    // another one because somebody has the one that was wanted.
    const std::string& nick() const { return nick_; }
    bool wasTaken() const { return wasTaken_; }

    // What the server can do, which may change after the registration, too.
    const IrcCapabilities& capabilities() const { return capabilities_; }

private:
    enum class Phase { listing, requesting, loggingIn, ended, done };

    bool takeUnknown(std::string_view command);
    void welcome(const IrcMessage& message);
    void askAnew(bool hasAnother);

    void takeCapabilities(const IrcMessage& message);
    void goOn();
    void endCapabilities();

    void beginLogin();
    void takeLogin(const IrcMessage& message);
    void beginLateLogin();
    bool takeLateLogin(const IrcMessage& message);

    IrcIdentity identity_;
    Send send_;
    Tell tell_;
    IrcNickChoice choice_;
    std::string nick_;
    IrcCapabilities capabilities_;
    IrcLogin login_;
    Phase phase_ = Phase::listing;
    bool isEncrypted_, hasGivenUp_ = false, wasTaken_ = false;
};

} // namespace larkspin
