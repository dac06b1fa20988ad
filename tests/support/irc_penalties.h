// How servers count what a client sends, as was measured on Debian's, or as their documentation
// has it.
#pragma once

#include <chrono>
#include <cstddef>

namespace larkspin {

struct IrcPenalties {
    const char* name;
    const char* capabilities;
    std::chrono::nanoseconds perLine, perPart; // what a line costs, and each further 100 bytes
    std::chrono::nanoseconds credit;           // so far a client may be ahead of the clock
    std::chrono::nanoseconds betweenLooks;     // at what it has sent beyond that
    std::size_t mostUnread;                    // bytes of that, or else the connection ends
    std::chrono::seconds longestRecital;       // of 150 lines: what a client has to achieve here
};

inline constexpr std::chrono::milliseconds second{1000};
inline constexpr const char* withEcho = "echo-message multi-prefix";

inline constexpr IrcPenalties ircPenalties[] = {
    {"irc2", "", 2 * second, second, 10 * second, second * 11 / 10, 1000,
     std::chrono::seconds(560)},
    {"InspIRCd", withEcho, second, {}, 10 * second, second, 8192, std::chrono::seconds(220)},
    {"ircd-hybrid", "", second, {}, 5 * second, second, 2560, std::chrono::seconds(230)},
    {"UnrealIRCd", withEcho, second, second, 10 * second, second, 8192, std::chrono::seconds(400)},
    {"ngircd", "", second / 3, {}, second, second, 2048, std::chrono::seconds(140)},
    {"solanum", withEcho, second / 2, {}, 5 * second / 2, second, 2560, std::chrono::seconds(140)},
    {"without any", withEcho, {}, {}, second, second, 2048, std::chrono::seconds(140)},
};

} // namespace larkspin
