// A server's end without a server: takes connections at a port of this machine that was free.
#pragma once

#include "platform/posix/descriptor.h"

#include <arpa/inet.h>
#include <cstdint>
#include <poll.h>
#include <string>
#include <sys/socket.h>

namespace larkspin {

class Listener {
public:
    Listener() : listening_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{AF_INET, 0, {htonl(INADDR_LOOPBACK)}, {}};
        socklen_t size = sizeof address;
        auto* const any = reinterpret_cast<sockaddr*>(&address);
        ::bind(listening_.number(), any, size);
        ::listen(listening_.number(), 8);
        ::getsockname(listening_.number(), any, &size);
        port_ = ntohs(address.sin_port);
    }

    std::uint16_t port() const { return port_; }
    bool wasCalled() const { // and nobody has answered yet
        pollfd called{listening_.number(), POLLIN, 0};
        return ::poll(&called, 1, 0) > 0;
    }
    Descriptor take() const { // the next one that has come, or comes
        return Descriptor(::accept4(listening_.number(), nullptr, nullptr, SOCK_CLOEXEC));
    }

private:
    Descriptor listening_;
    std::uint16_t port_;
};

} // namespace larkspin
