// Somebody on an IRC server (irc_server.h), by a bare socket: for what a test wants to be said and
// heard. A wait here doesn't serve an event loop.
#pragma once

#include "support/irc_server.h"

#include <chrono>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>

namespace larkspin {

// Lines to a port of this machine and back.
class IrcSocket {
public:
    explicit IrcSocket(std::uint16_t port) : socket_(connectTo(port)) {}
    explicit IrcSocket(Descriptor socket) : socket_(std::move(socket)) {}

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
            for (std::size_t end; (end = unread_.find('\n')) != std::string::npos;) {
                const bool isCrLf = end > 0 && unread_[end - 1] == '\r';
                const std::string line = unread_.substr(0, isCrLf ? end - 1 : end);
                unread_.erase(0, end + 1);
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
    Descriptor socket_;
    std::string unread_;
};

class IrcPerson : public IrcSocket {
public:
    explicit IrcPerson(const std::string& nick) : IrcSocket(LocalIrcServer::plainPort) {
        send("NICK " + nick);
        send("USER " + nick + " 0 * :" + nick);
        EXPECT_NE(hears(" 001 "), "") << nick;
    }
};

} // namespace larkspin
