// What kind of character one is. Letters and digits are those of ASCII; the control characters of
// Unicode are two ranges, of which a single byte can only be of the first, or DEL.
#pragma once

#include <algorithm>
#include <string_view>

namespace larkspin {

constexpr bool isAscii(char byte) {
    return static_cast<unsigned char>(byte) < 0x80;
}

constexpr bool isDigit(char byte) {
    return byte >= '0' && byte <= '9';
}

constexpr bool isCapital(char byte) {
    return byte >= 'A' && byte <= 'Z';
}

// The small letter of a capital; anything else as it is.
constexpr char smallAscii(char byte) {
    return isCapital(byte) ? static_cast<char>(byte - 'A' + 'a') : byte;
}

// The other way.
constexpr char capitalAscii(char byte) {
    return byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 'a' + 'A') : byte;
}

constexpr bool isLetter(char byte) {
    const char letter = smallAscii(byte);
    return letter >= 'a' && letter <= 'z';
}

constexpr bool isControl(char32_t code) {
    return code < 0x20 || (code >= 0x7F && code < 0xA0);
}

constexpr bool isControl(char byte) {
    return isAscii(byte) && isControl(static_cast<char32_t>(byte));
}

constexpr bool hasControls(std::string_view text) {
    return std::ranges::any_of(text, [](char byte) { return isControl(byte); });
}

} // namespace larkspin
