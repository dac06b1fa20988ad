#include "platform/posix/percent_escapes.h"

#include "text/number.h"

#include <charconv>
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

std::string percentUnescaped(std::string_view text) {
    std::string bytes;
    while (!text.empty()) {
        std::uint8_t byte = 0;
        const std::string_view digits = text.substr(1, 2);
        const bool isEscape =
            text[0] == '%' && digits.size() == 2 &&
            std::from_chars(digits.begin(), digits.end(), byte, 16).ptr == digits.end();
        bytes += isEscape ? static_cast<char>(byte) : text[0];
        text.remove_prefix(isEscape ? 3 : 1);
    }
    return bytes;
}

} // namespace larkspin
