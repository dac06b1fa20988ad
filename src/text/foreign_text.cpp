#include "text/foreign_text.h"

#include "text/utf8.h"

#include <cstddef>

namespace larkspin {

namespace {

// The characters of the bytes from 80 to 9F; 0 for those that have none. All other bytes are the
// character with their number.
constexpr char32_t ofCp1252[] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178,
};

char32_t codeInCp1252(char byte) {
    const auto number = static_cast<unsigned char>(byte);
    const bool isInTable = number >= 0x80 && number < 0xA0;
    return isInTable ? ofCp1252[number - 0x80] : number;
}

// Whether the bytes would be one character with some more after them.
bool isBegunCharacter(std::string_view bytes) {
    constexpr std::size_t longestCharacter = 4;
    for (const char next : {'\x80', '\xBF'})
        for (std::size_t size = bytes.size() + 1; size <= longestCharacter; ++size) {
            std::string whole(bytes);
            whole.resize(size, next);
            const Character character = firstCharacter(whole);
            if (character.valid && character.length == size)
                return true;
        }
    return false;
}

bool isUtf8(std::string_view text) {
    bool hasLongOnes = false;
    while (!text.empty()) {
        const Character character = firstCharacter(text);
        if (!character.valid)
            return hasLongOnes && isBegunCharacter(text);
        hasLongOnes = hasLongOnes || character.length > 1;
        text.remove_prefix(character.length);
    }
    return true;
}

} // namespace

std::string asUtf8(std::string_view bytes) {
    if (isUtf8(bytes))
        return std::string(bytes);
    std::string text;
    for (const char byte : bytes)
        if (const char32_t code = codeInCp1252(byte); code != 0 || byte == '\0')
            appendCharacter(text, code);
        else
            text += replacementCharacter;
    return text;
}

} // namespace larkspin
