// A real IRC server (ngircd) in a network of the test process's own, and people on it.
//
// The test belongs into tests/platform/irc/, whose main enters that network (own_network.h). It
// begins with `if (!isAlone()) GTEST_SKIP() << …;`, makes a `LocalIrcServer`, and lets whatever it
// tests connect to 127.0.0.1 or "irc.test", at `plainPort` or, with TLS, `encryptedPort`. The
// ports are fixed: each test process has them for itself, so that tests may run side by side. A
// program that the test starts (`Child`) is in the same network, and trusts the server's
// certificate, since it stands in place of all that the system trusts.
//
// The server knows no flood penalty, and of capabilities only multi-prefix, so that nothing is sent
// back to who has said it.
#pragma once

#include "platform/posix/descriptor.h"
#include "support/certificate.h"

namespace larkspin {

class LocalIrcServer {
public:
    static constexpr std::uint16_t plainPort = 6667, encryptedPort = 6697;
    static constexpr const char* name = "irc.test";

    LocalIrcServer();
    ~LocalIrcServer() { kill(); }

    // Within some 10 ms; once made it is started. Whether people can come.
    bool start();
    void kill(); // connections break without a word; people are gone

private:
    const TempDirectory disk_;
    std::unique_ptr<Child> process_;
};

// Somebody on the server, by a bare socket: for what a test wants to be said and heard. A wait
// here doesn't serve an event loop.
class IrcPerson {
public:
    explicit IrcPerson(const std::string& nick); // comes in at once

    void send(const std::string& line);

    // The next line with this text in it, as it came; those before it are gone, pings are answered.
    // Empty when it doesn't come.
    std::string hears(std::string_view text,
                      std::chrono::milliseconds within = std::chrono::seconds(5));

private:
    Descriptor socket_;
    std::string unread_;
};

} // namespace larkspin
