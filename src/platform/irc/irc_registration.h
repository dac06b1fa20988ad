// How a connection begins: capabilities, the account, the name. Ends when the server welcomes.
#pragma once

#include "platform/irc/irc_names.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

struct IrcMessage;

struct IrcIdentity {
    std::string nick;
    std::string account, password; // blank without one; only ever sent over TLS, by SASL PLAIN
};

class IrcRegistration {
public:
    using Send = std::function<void(const std::string& line)>;
    using Tell = std::function<void(const std::string& text)>; // what the owner should know

    IrcRegistration(IrcIdentity identity, bool encrypted, Send send, Tell tell);

    // The first lines: CAP LS 302, NICK, USER.
    void begin();

    // Takes CAP, AUTHENTICATE, 001, 432, 433, 436, 437, 90x. True when the message was for it.
    bool take(const IrcMessage& message);

    bool isDone() const;

    // The name that the server knows this connection by, once that is done (001).
    const std::string& nick() const;

    // Which of the capabilities hold, also behind the registration (CAP DEL).
    bool echoes() const;
};

} // namespace larkspin
