// A real IRC server, of each family that Debian has, in a network of the test process's own.
//
// The test lies in tests/platform/irc/, whose main enters that network (own_network.h), and skips
// itself unless `isAlone()`. It connects to 127.0.0.1 or "irc.test", at `plainPort` or, with TLS,
// `encryptedPort`; so does a program that it starts (`Child`), which trusts the server's
// certificate, since that stands in place of all that the system trusts.
#pragma once

#include "platform/posix/descriptor.h"
#include "support/child.h"
#include "support/temp_directory.h"

#include <cstdint>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace larkspin {

// What one of them does that the others don't: InspIRCd sends back to a client what it has said,
// tells the time of each line, and lets services speak for accounts; ircd-hybrid tells the time;
// ngircd does nothing of it. irc2, as IRCnet has it, takes lines the most slowly, counts their
// bytes as well, and knows neither TLS nor any capability.
enum class IrcFamily { ngircd, inspircd, hybrid, irc2 };
const char* nameOf(IrcFamily family);

class LocalIrcServer {
public:
    static constexpr std::uint16_t plainPort = 6667, encryptedPort = 6697, servicesPort = 6900;
    static constexpr const char* name = "irc.test";

    // Once made it is started. It may count what its people send and let them wait, as it does when
    // its owner sets nothing else.
    enum class Limits { none, usual };
    explicit LocalIrcServer(IrcFamily family = IrcFamily::ngircd, Limits limits = Limits::none,
                            std::vector<std::string> variables = {});
    ~LocalIrcServer();

    // Within some 10 ms. Whether people can come.
    bool start();
    void kill(); // connections break without a word; people are gone

private:
    const IrcFamily family_;
    const std::vector<std::string> variables_;
    const TempDirectory disk_;
    std::unique_ptr<Child> process_;
    std::jthread names_; // which some insist on asking for
};

// A connection to that port of this machine; not open where nobody listens.
Descriptor connectTo(std::uint16_t port);
// Waits until somebody listens there; false when that takes too long or the process ends.
bool listensAt(std::uint16_t port, Child& process);

// A file of tests/support/servers, in which some words stand for what is known only here: @DISK@
// for a directory of the server's own, @CERTIFICATE@ and @KEY@, which the system trusts, and more.
std::string serverFile(const std::string& name, const TempDirectory& disk);

} // namespace larkspin
