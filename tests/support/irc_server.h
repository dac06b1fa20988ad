// A real IRC server (ngircd) in a network of the test process's own, and people on it.
//
// The test lies in tests/platform/irc/, whose main enters that network (own_network.h), and skips
// itself unless `isAlone()`. It connects to 127.0.0.1 or "irc.test", at `plainPort` or, with TLS,
// `encryptedPort`; so does a program that it starts (`Child`), which trusts the server's
// certificate, since that stands in place of all that the system trusts.
//
// The server knows no flood penalty, and of capabilities only multi-prefix, so that nothing is sent
// back to who has said it.
#pragma once

#include "platform/posix/descriptor.h"
#include "support/certificate.h"
#include "support/own_network.h"
#include "support/patience.h"

#include <arpa/inet.h>
#include <csignal>
#include <poll.h>
#include <sys/socket.h>

namespace larkspin {

class LocalIrcServer {
public:
    static constexpr std::uint16_t plainPort = 6667, encryptedPort = 6697;
    static constexpr const char* name = "irc.test";

    LocalIrcServer() {
        disk_.write("primes", primes);
        disk_.write("ngircd.conf",
                    "[Global]\nName = " + std::string(name) +
                        "\nInfo = tests\nListen = 127.0.0.1\nPorts = " + std::to_string(plainPort) +
                        "\nServerUID = " + std::to_string(::getuid()) +
                        "\nServerGID = " + std::to_string(::getgid()) +
                        "\n[Limits]\nMaxPenaltyTime = 0\nMaxConnectionsIP = 0\n"
                        "MaxNickLength = 30\n"
                        "[Options]\nDNS = no\nIdent = no\nPAM = no\n"
                        "[SSL]\nPorts = " +
                        std::to_string(encryptedPort) + "\nCertFile = " + certificate().file() +
                        "\nKeyFile = " + certificate().key() +
                        "\nDHFile = " + (disk_.path() / "primes").native() + '\n');
        EXPECT_TRUE(start());
    }
    ~LocalIrcServer() { kill(); }

    // Within some 10 ms; once made it is started. Whether people can come.
    bool start() {
        kill();
        process_ = Child::start("/usr/sbin/ngircd", {},
                                {"-n", "-f", (disk_.path() / "ngircd.conf").native()});
        const auto until = std::chrono::steady_clock::now() + patience;
        while (!connectTo(encryptedPort).isOpen())
            if (std::chrono::steady_clock::now() > until ||
                process_->ends(std::chrono::milliseconds(1)))
                return false;
        return true;
    }
    void kill() { // connections break without a word; people are gone
        if (process_)
            ::kill(process_->id(), SIGKILL);
        process_.reset();
    }

    static Descriptor connectTo(std::uint16_t port) {
        Descriptor socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
        const sockaddr_in address{AF_INET, htons(port), {htonl(INADDR_LOOPBACK)}, {}};
        if (::connect(socket.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address))
            return {};
        return socket;
    }

private:
    // One for all servers: the library remembers what the system trusts.
    static const Certificate& certificate() {
        static const Certificate made(std::string("DNS:") + name + ",IP:127.0.0.1");
        static const bool trusted = trustAlone(made.file());
        EXPECT_TRUE(trusted);
        return made;
    }
    // A prime of RFC 7919: the server would look for one of its own for half a second.
    static constexpr const char* primes =
        "-----BEGIN DH PARAMETERS-----\n"
        "MIIBCAKCAQEA//////////+t+FRYortKmq/cViAnPTzx2LnFg84tNpWp4TZBFGQz\n"
        "+8yTnc4kmz75fS/jY2MMddj2gbICrsRhetPfHtXV/WVhJDP1H18GbtCFY2VVPe0a\n"
        "87VXE15/V8k1mE8McODmi3fipona8+/och3xWKE2rec1MKzKT0g6eXq8CrGCsyT7\n"
        "YdEIqUuyyOP7uWrat2DX9GgdT0Kj3jlN9K5W7edjcrsZCwenyO4KbXCeAvzhzffi\n"
        "7MA0BM0oNC9hkXL+nOmFg/+OTxIy7vKBg8P+OxtMb61zO7X8vC7CIAXFjvGDfRaD\n"
        "ssbzSibBsu/6iGtCOGEoXJf//////////wIBAg==\n"
        "-----END DH PARAMETERS-----\n";

    const TempDirectory disk_;
    std::unique_ptr<Child> process_;
};

// Somebody on the server, by a bare socket: for what a test wants to be said and heard. A wait
// here doesn't serve an event loop.
class IrcPerson {
public:
    explicit IrcPerson(const std::string& nick) { // comes in at once
        send("NICK " + nick);
        send("USER " + nick + " 0 * :" + nick);
        EXPECT_NE(hears(" 001 "), "") << nick;
    }

    void send(const std::string& line) {
        const std::string bytes = line + "\r\n";
        ::send(socket_.number(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
    }

    // The next line with this text in it, as it came; those before it are gone, pings are answered.
    // Empty when it doesn't come.
    std::string hears(std::string_view text,
                      std::chrono::milliseconds within = std::chrono::seconds(5)) {
        using Clock = std::chrono::steady_clock;
        for (const auto until = Clock::now() + within;;) {
            for (std::size_t end; (end = unread_.find("\r\n")) != std::string::npos;) {
                const std::string line = unread_.substr(0, end);
                unread_.erase(0, end + 2);
                if (line.starts_with("PING "))
                    send("PONG " + line.substr(5));
                if (line.find(text) != std::string::npos)
                    return line;
            }
            const auto left = std::chrono::ceil<std::chrono::milliseconds>(until - Clock::now());
            pollfd readable{socket_.number(), POLLIN, 0};
            char bytes[4096];
            if (left.count() <= 0 || ::poll(&readable, 1, static_cast<int>(left.count())) <= 0)
                return {};
            const ssize_t count = ::recv(socket_.number(), bytes, sizeof bytes, 0);
            if (count <= 0)
                return {};
            unread_.append(bytes, static_cast<std::size_t>(count));
        }
    }

private:
    Descriptor socket_ = LocalIrcServer::connectTo(LocalIrcServer::plainPort);
    std::string unread_;
};

} // namespace larkspin
