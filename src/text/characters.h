// What kind of character one is. Letters and digits are those of ASCII; the control characters of
// Unicode are two ranges, of which a single byte can only be of the first, or DEL.
#pragma once

#include <algorithm>
#include <string_view>

namespace larkspin {

constexpr bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

constexpr bool isLetter(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
}

constexpr bool isControl(char32_t code) {
    return code < 0x20 || (code >= 0x7F && code < 0xA0);
}

constexpr bool isControl(char byte) {
    const auto code = static_cast<unsigned char>(byte);
    return code < 0x80 && isControl(static_cast<char32_t>(code));
}

constexpr bool hasControls(std::string_view text) {
    return std::ranges::any_of(text, [](char byte) { return isControl(byte); });
}

} // namespace larkspin
