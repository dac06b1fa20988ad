#include "text/fold.h"

#include "text/utf8.h"

#include <algorithm>
#include <iterator>

namespace larkspin {

namespace {

struct FoldRange {
    char32_t first, last;
    char32_t step; // 2 where capitals and small letters alternate
    int delta;
};

constexpr FoldRange foldRanges[] = {
#include "text/fold_table.inc"
};

constexpr char32_t standInBase = 0xF000;
constexpr std::u32string_view plainCharacters = U" \"*:<>?";

char32_t folded(char32_t code) {
    if (code > standInBase && plainCharacters.find(code - standInBase) != plainCharacters.npos)
        return code - standInBase;
    const auto range = std::lower_bound(std::begin(foldRanges), std::end(foldRanges), code,
                                        [](const FoldRange& r, char32_t c) { return r.last < c; });
    if (range == std::end(foldRanges) || code < range->first ||
        (code - range->first) % range->step != 0)
        return code;
    return static_cast<char32_t>(static_cast<int>(code) + range->delta);
}

bool isAscii(char byte) {
    return static_cast<unsigned char>(byte) < 0x80;
}

char foldedAscii(char byte) {
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + ('a' - 'A')) : byte;
}

} // namespace

std::string foldCase(std::string_view text) {
    std::string result(text);
    char bits = 0;
    for (char& byte : result) {
        bits = static_cast<char>(bits | byte);
        byte = foldedAscii(byte);
    }
    if (isAscii(bits))
        return result;

    result.clear();
    while (!text.empty()) {
        const Character character = firstCharacter(text);
        if (character.length == 1)
            result += foldedAscii(text[0]);
        else
            appendCharacter(result, folded(character.code));
        text.remove_prefix(character.length);
    }
    return result;
}

bool equalFolded(std::string_view a, std::string_view b) {
    const std::size_t both = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < both; ++i) {
        if (!isAscii(a[i]) || !isAscii(b[i]))
            return foldCase(a.substr(i)) == foldCase(b.substr(i));
        if (foldedAscii(a[i]) != foldedAscii(b[i]))
            return false;
    }
    return a.size() == b.size();
}

bool lessFolded(std::string_view a, std::string_view b) {
    return compareFolded(a, b) < 0;
}

int compareFolded(std::string_view a, std::string_view b) {
    const std::size_t both = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < both; ++i) {
        if (!isAscii(a[i]) || !isAscii(b[i]))
            return foldCase(a.substr(i)).compare(foldCase(b.substr(i)));
        const char left = foldedAscii(a[i]), right = foldedAscii(b[i]);
        if (left != right)
            return static_cast<unsigned char>(left) < static_cast<unsigned char>(right) ? -1 : 1;
    }
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

} // namespace larkspin
