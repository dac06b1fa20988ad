// What a server says about going to it by TLS alone (STS).
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string_view>

namespace larkspin {

struct IrcSts {
    std::optional<std::uint16_t> port;            // for TLS; told without TLS
    std::optional<std::chrono::seconds> duration; // 0: no longer; told by TLS
};

// The value of the capability: "duration=2592000,port=6697". What makes no sense counts as not
// told.
IrcSts readSts(std::string_view value);

} // namespace larkspin
