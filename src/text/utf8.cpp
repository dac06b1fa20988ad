#include "text/utf8.h"

#include <algorithm>

namespace larkspin {

namespace {

bool isContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// 0 for a byte that begins no character. C0, C1 and everything from F5 on could only begin an
// overlong form or a code past the last one.
std::size_t lengthByLead(unsigned char lead) {
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead < 0xE0)
        return 2;
    if (lead >= 0xE0 && lead < 0xF0)
        return 3;
    if (lead >= 0xF0 && lead < 0xF5)
        return 4;
    return 0;
}

// Overlong forms, surrogates and codes past the last one.
bool isForbidden(char32_t code, std::size_t length) {
    constexpr char32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    return code < smallest[length] || (code >= 0xD800 && code < 0xE000) || code > 0x10FFFF;
}

// Where the last character of a text that isn't empty begins.
std::size_t lastCharacterStart(std::string_view text) {
    // No character has more than four bytes. If none ends exactly at the end of the text, the last
    // byte is no valid character and counts by itself.
    const std::size_t furthest = text.size() - std::min<std::size_t>(text.size(), 4);
    for (std::size_t start = text.size() - 1;; --start) {
        if (!isContinuation(text[start])) {
            const Character character = firstCharacter(text.substr(start));
            return start + character.length == text.size() ? start : text.size() - 1;
        }
        if (start == furthest)
            return text.size() - 1;
    }
}

} // namespace

Character firstCharacter(std::string_view text) {
    const auto lead = static_cast<unsigned char>(text[0]);
    if (lead < 0x80)
        return {lead, 1, true};
    const std::size_t length = lengthByLead(lead);
    if (length == 0 || length > text.size())
        return {lead, 1, false};
    // The lead byte begins with as many ones as the character has bytes, and a zero. The bits after
    // that belong to the code.
    char32_t code = lead & (0xFFu >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if (!isContinuation(text[i]))
            return {lead, 1, false};
        code = (code << 6) | (static_cast<unsigned char>(text[i]) & 0x3Fu);
    }
    if (isForbidden(code, length))
        return {lead, 1, false};
    return {code, length, true};
}

void appendCharacter(std::string& text, char32_t code) {
    const auto put = [&text](char32_t byte) { text += static_cast<char>(byte); };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0 | (code >> 6));
        put(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        put(0xE0 | (code >> 12));
        put(0x80 | ((code >> 6) & 0x3F));
        put(0x80 | (code & 0x3F));
    } else {
        put(0xF0 | (code >> 18));
        put(0x80 | ((code >> 12) & 0x3F));
        put(0x80 | ((code >> 6) & 0x3F));
        put(0x80 | (code & 0x3F));
    }
}

std::size_t fittingLength(std::string_view text, std::size_t most) {
    if (text.size() <= most)
        return text.size();
    constexpr int longestRest = 3; // of a character, after its first byte
    std::size_t length = most;
    for (int back = 0; back < longestRest && length > 0 && isContinuation(text[length]); ++back)
        --length;
    return length;
}

std::size_t characterCount(std::string_view text) {
    std::size_t count = 0;
    for (; !text.empty(); ++count)
        text.remove_prefix(firstCharacter(text).length);
    return count;
}

std::size_t prefixLength(std::string_view text, std::size_t count) {
    std::size_t bytes = 0;
    while (count-- > 0 && bytes < text.size())
        bytes += firstCharacter(text.substr(bytes)).length;
    return bytes;
}

std::string_view withoutLast(std::string_view text, std::size_t count) {
    const auto tail = text.substr(text.size() - std::min(count, text.size()));
    // An ASCII character is a single byte, so most texts need no walk backwards.
    if (std::none_of(tail.begin(), tail.end(), [](char byte) { return byte & 0x80; }))
        return text.substr(0, text.size() - tail.size());
    while (count-- > 0 && !text.empty())
        text = text.substr(0, lastCharacterStart(text));
    return text;
}

} // namespace larkspin
