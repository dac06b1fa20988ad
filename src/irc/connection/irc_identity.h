// Who the owner is to a server.
#pragma once

#include <string>

namespace larkspin {

struct IrcIdentity {
    std::string nick;
    std::string account{}, password{}; // blank without one; only ever sent over TLS, by SASL

    // Blank for the usual ones: "larkspin", and the nick.
    std::string user{}, realName{};

    std::string serverPassword{}; // which all of a server's guests need, or those of a bouncer
};

} // namespace larkspin
