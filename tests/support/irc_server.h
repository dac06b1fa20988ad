// A real IRC server (ngircd) in a network of the test process's own, and people on it.
//
// The test belongs into tests/platform/irc/, whose main enters that network (own_network.h). It
// begins with `if (!isAlone()) GTEST_SKIP() << …;`, makes a `LocalIrcServer`, and lets whatever it
// tests connect to 127.0.0.1 or "irc.test", at `plainPort` or, with TLS, `encryptedPort`. The
// ports are fixed: each test process has them for itself, so that tests may run side by side. A
// program that the test starts (`Child`) is in the same network, and trusts the server's
// certificate, since it stands in place of all that the system trusts.
//
//     LocalIrcServer server("[Channel]\nName = #den\nModes = tn\n");
//     const auto program = Child::start(LARKSPIN_TTY, …);
//     program->tell("/connect irc.test ann #den");
//     IrcPerson bob("bob");
//     bob.send("JOIN #den");
//     EXPECT_NE(bob.hears("JOIN"), "");             // the answer to his own
//     bob.send("PRIVMSG #den :hello");
//     EXPECT_TRUE(program->says("hello", 5s));
//     server.kill();                                // as when its machine fails
//     server.start();                               // and is there again; people are gone
//
// The server knows no flood penalty unless asked for: `LocalIrcServer("[Limits]\nMaxPenaltyTime =
// 2\n")`. It has no capabilities but multi-prefix, and so no echo-message.
#pragma once

#include "platform/posix/descriptor.h"
#include "support/certificate.h"

namespace larkspin {

class LocalIrcServer {
public:
    static constexpr std::uint16_t plainPort = 6667, encryptedPort = 6697;
    static constexpr const char* name = "irc.test";

    // More of ngircd.conf(5), by sections: it overrides what stands in irc_server.cpp. With
    // "[Operator]\nName = op\nPassword = pass\n", say, `OPER op pass` makes somebody an operator.
    explicit LocalIrcServer(const std::string& more = "");
    ~LocalIrcServer() { kill(); }

    // Within some 10 ms; once made it is started. Whether people can come.
    bool start();
    // Connections break without a word. `end` says goodbye first.
    void kill() { stop(SIGKILL); }
    void end() { stop(SIGTERM); }

private:
    void stop(int signal);

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
