#include "irc/protocol/base64.h"

#include <algorithm>
#include <cstdint>

namespace larkspin {

namespace {

constexpr std::string_view digits =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

} // namespace

std::string base64(std::string_view bytes) {
    std::string text;
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        const std::string_view three = bytes.substr(at, 3);
        std::uint32_t bits = 0;
        for (std::size_t i = 0; i < 3; ++i)
            bits = bits << 8 | (i < three.size() ? static_cast<unsigned char>(three[i]) : 0u);
        for (std::size_t i = 0; i < 4; ++i)
            text += i <= three.size() ? digits[bits >> (18 - 6 * i) & 63] : '=';
    }
    return text;
}

std::optional<std::string> fromBase64(std::string_view text) {
    const std::size_t length = std::min(text.find('='), text.size());
    const std::string_view filling = text.substr(length);
    if (text.size() % 4 != 0 || filling.size() > 2 ||
        filling.find_first_not_of('=') != filling.npos)
        return std::nullopt;
    std::string bytes;
    std::uint32_t bits = 0;
    unsigned held = 0; // of them
    for (const char letter : text.substr(0, length)) {
        const auto digit = digits.find(letter);
        if (digit == digits.npos)
            return std::nullopt;
        bits = (bits << 6 | static_cast<std::uint32_t>(digit)) & 0xFFF;
        held += 6;
        if (held >= 8) {
            held -= 8;
            bytes += static_cast<char>(bits >> held & 0xFF);
        }
    }
    const bool isWhole = (bits & ((1u << held) - 1)) == 0; // what is left over says nothing
    return isWhole ? std::optional(bytes) : std::nullopt;
}

} // namespace larkspin
