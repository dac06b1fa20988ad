#include "host/window_tree/host_bytes.h"

#include "text/utf8.h"

#include <algorithm>
#include <iterator>

namespace larkspin {

namespace {

// The characters of the bytes 0x80 to 0x9F. All others are those of their number.
constexpr char32_t special[] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

bool isSpecial(char32_t code) {
    return code >= 0x80 && code < 0xA0;
}

bool endsLine(char32_t code) {
    return code >= '\n' && code <= '\r';
}

char32_t characterOf(char byte) {
    const char32_t code = static_cast<unsigned char>(byte);
    if (endsLine(code))
        return ' ';
    return isSpecial(code) ? special[code - 0x80] : code;
}

// The micro sign, which the code page has, is this letter once its case is folded.
constexpr char32_t micro = 0xB5, foldedMicro = 0x3BC;
// The program puts the joiner after a bracket that must not open a tag. The code page doesn't have
// it; the soft hyphen is the only invisible character that it has.
constexpr char32_t joiner = 0x200C, softHyphen = 0xAD;

char32_t nearest(char32_t code) {
    return code == foldedMicro ? micro : code == joiner ? softHyphen : code;
}

char byteOf(const Character& character) {
    const char32_t code = character.valid ? nearest(character.code) : character.code;
    if (!character.valid || (code < 0x100 && !isSpecial(code)))
        return static_cast<char>(code);
    const auto at = std::find(std::begin(special), std::end(special), code);
    return at == std::end(special) ? '?' : static_cast<char>(0x80 + (at - std::begin(special)));
}

} // namespace

std::string fromSingleByte(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes)
        appendCharacter(text, characterOf(byte));
    return text;
}

std::string toSingleByte(std::string_view text) {
    std::string bytes;
    while (!text.empty()) {
        const Character character = firstCharacter(text);
        if (const char byte = byteOf(character))
            bytes += byte;
        text.remove_prefix(character.length);
    }
    return bytes;
}

std::uint64_t littleEndian(std::string_view bytes) {
    std::uint64_t value = 0;
    for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte)
        value = value << 8 | static_cast<unsigned char>(*byte);
    return value;
}

} // namespace larkspin
