#include "support/irc_server.h"

#include "support/own_network.h"
#include "support/patience.h"

#include <arpa/inet.h>
#include <csignal>
#include <poll.h>
#include <sys/socket.h>
#include <thread>

namespace larkspin {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

Descriptor connectTo(std::uint16_t port) {
    Descriptor socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const sockaddr_in address{AF_INET, htons(port), {htonl(INADDR_LOOPBACK)}, {}};
    if (::connect(socket.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address))
        return {};
    return socket;
}

// One certificate for all servers: the library remembers what the system trusts.
const Certificate& certificate() {
    static const Certificate made(std::string("DNS:") + LocalIrcServer::name + ",IP:127.0.0.1");
    static const bool trusted = trustAlone(made.file());
    EXPECT_TRUE(trusted);
    return made;
}

// A prime of RFC 7919: the server would look for one of its own for half a second.
constexpr const char* primes = "-----BEGIN DH PARAMETERS-----\n"
                               "MIIBCAKCAQEA//////////+t+FRYortKmq/cViAnPTzx2LnFg84tNpWp4TZBFGQz\n"
                               "+8yTnc4kmz75fS/jY2MMddj2gbICrsRhetPfHtXV/WVhJDP1H18GbtCFY2VVPe0a\n"
                               "87VXE15/V8k1mE8McODmi3fipona8+/och3xWKE2rec1MKzKT0g6eXq8CrGCsyT7\n"
                               "YdEIqUuyyOP7uWrat2DX9GgdT0Kj3jlN9K5W7edjcrsZCwenyO4KbXCeAvzhzffi\n"
                               "7MA0BM0oNC9hkXL+nOmFg/+OTxIy7vKBg8P+OxtMb61zO7X8vC7CIAXFjvGDfRaD\n"
                               "ssbzSibBsu/6iGtCOGEoXJf//////////wIBAg==\n"
                               "-----END DH PARAMETERS-----\n";

} // namespace

LocalIrcServer::LocalIrcServer() {
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

bool LocalIrcServer::start() {
    kill();
    process_ =
        Child::start("/usr/sbin/ngircd", {}, {"-n", "-f", (disk_.path() / "ngircd.conf").native()});
    const auto until = Clock::now() + patience;
    while (!connectTo(encryptedPort).isOpen()) {
        if (Clock::now() > until || process_->ends(1ms))
            return false;
    }
    return true;
}

void LocalIrcServer::kill() {
    if (process_)
        ::kill(process_->id(), SIGKILL);
    process_.reset();
}

IrcPerson::IrcPerson(const std::string& nick) : socket_(connectTo(LocalIrcServer::plainPort)) {
    send("NICK " + nick);
    send("USER " + nick + " 0 * :" + nick);
    EXPECT_NE(hears(" 001 "), "") << nick;
}

void IrcPerson::send(const std::string& line) {
    const std::string bytes = line + "\r\n";
    ::send(socket_.number(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
}

std::string IrcPerson::hears(std::string_view text, std::chrono::milliseconds within) {
    const auto until = Clock::now() + within;
    for (;;) {
        for (auto end = unread_.find("\r\n"); end != std::string::npos;
             end = unread_.find("\r\n")) {
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
        if (left <= 0ms || ::poll(&readable, 1, static_cast<int>(left.count())) <= 0)
            return {};
        const ssize_t count = ::recv(socket_.number(), bytes, sizeof bytes, 0);
        if (count <= 0)
            return {};
        unread_.append(bytes, static_cast<std::size_t>(count));
    }
}

} // namespace larkspin
