#include "platform/posix/percent_escapes.h"

#include "text/number.h"

#include <cstdint>

namespace larkspin {

std::string percentEscaped(std::string_view text, std::string_view plain) {
    constexpr std::string_view always =
        "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ-._~";
    std::string escaped;
    for (const char byte : text)
        if (always.find(byte) != std::string_view::npos ||
            plain.find(byte) != std::string_view::npos)
            escaped += byte;
        else
            escaped += '%' + hexPair(static_cast<std::uint8_t>(byte));
    return escaped;
}

} // namespace larkspin
