// A chat server's end, as fast as whoever takes its lines: a real one would give up on him.
#pragma once

#include "platform/posix/descriptor.h"

#include <string>
#include <string_view>
#include <sys/socket.h>

namespace larkspin {

inline void say(const Descriptor& client, const std::string& text) {
    for (std::string_view left = text; !left.empty();) {
        const ssize_t count = ::send(client.number(), left.data(), left.size(), MSG_NOSIGNAL);
        if (count <= 0)
            return;
        left.remove_prefix(static_cast<std::size_t>(count));
    }
}

// False when the client has gone before it came.
inline bool waitFor(const Descriptor& client, const std::string& text) {
    std::string heard;
    char bytes[4096];
    while (heard.find(text) == std::string::npos) {
        const ssize_t count = ::recv(client.number(), bytes, sizeof bytes, 0);
        if (count <= 0)
            return false;
        heard.append(bytes, static_cast<std::size_t>(count));
    }
    return true;
}

} // namespace larkspin
