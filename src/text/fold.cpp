#include "text/fold.h"

#include "text/canonical.h"
#include "text/characters.h"
#include "text/stand_ins.h"
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

char32_t folded(char32_t code) {
    if (const auto meant = standsFor(code); meant && *meant != '|' && *meant != '\\')
        return seenCharacter(code);
    const auto range = std::lower_bound(std::begin(foldRanges), std::end(foldRanges), code,
                                        [](const FoldRange& r, char32_t c) { return r.last < c; });
    if (range == std::end(foldRanges) || code < range->first ||
        (code - range->first) % range->step != 0)
        return code;
    return static_cast<char32_t>(static_cast<int>(code) + range->delta);
}

// The frequent cases go first: a single byte, then a single character that has one spelling only.
// Anything else is composed.
void appendFolded(std::string& result, std::string_view cluster) {
    Character character = firstCharacter(cluster);
    if (cluster.size() == 1) {
        result += smallAscii(cluster[0]);
        return;
    }
    if (character.length == cluster.size() && !isRespelled(character.code)) {
        appendCharacter(result, folded(character.code));
        return;
    }
    std::u32string codes;
    for (; !cluster.empty(); cluster.remove_prefix(character.length)) {
        character = firstCharacter(cluster);
        codes += character.code;
    }
    compose(codes);
    std::ranges::transform(codes, codes.begin(), [](char32_t code) {
        return code < 0x80 ? static_cast<char32_t>(smallAscii(static_cast<char>(code)))
                           : folded(code);
    });
    compose(codes); // a capital may have no composed form where the small letter has
    for (const char32_t code : codes)
        appendCharacter(result, code);
}

} // namespace

std::string foldCase(std::string_view text) {
    // Text of nothing but ASCII, by far the most frequent, has no clusters to look for.
    std::string result(text);
    char bits = 0;
    for (char& byte : result) {
        bits = static_cast<char>(bits | byte);
        byte = smallAscii(byte);
    }
    if (isAscii(bits))
        return result;

    result.clear();
    while (!text.empty()) {
        // ASCII can only be joined by something after it, and nothing in ASCII joins.
        const bool standsAlone = isAscii(text[0]) && (text.size() == 1 || isAscii(text[1]));
        const std::size_t length = standsAlone ? 1 : clusterLength(text);
        appendFolded(result, text.substr(0, length));
        text.remove_prefix(length);
    }
    return result;
}

std::string foldName(std::string_view typed) {
    std::string name;
    for (const char byte : foldCase(typed)) {
        if (byte == '|' || byte == '\\')
            appendStandIn(name, byte);
        else
            name += byte;
    }
    return name;
}

namespace {

// The folded rest of the text from one character before `i`: what stands at `i` may be an accent of
// that one.
std::string foldedFrom(std::string_view text, std::size_t i) {
    return foldCase(text.substr(i - std::min<std::size_t>(i, 1)));
}

// Whether what comes after the character at `i` may be an accent of it.
bool isJoined(std::string_view text, std::size_t i) {
    return i + 1 < text.size() && !isAscii(text[i + 1]);
}

} // namespace

bool equalFolded(std::string_view a, std::string_view b) {
    const std::size_t both = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < both; ++i) {
        if (!isAscii(a[i]) || !isAscii(b[i]))
            return foldedFrom(a, i) == foldedFrom(b, i);
        if (smallAscii(a[i]) != smallAscii(b[i]))
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
            return foldedFrom(a, i).compare(foldedFrom(b, i));
        const char left = smallAscii(a[i]), right = smallAscii(b[i]);
        // The letters differ, but with their accents they may be other characters.
        if (left != right && (isJoined(a, i) || isJoined(b, i)))
            return foldCase(a.substr(i)).compare(foldCase(b.substr(i)));
        if (left != right)
            return static_cast<unsigned char>(left) < static_cast<unsigned char>(right) ? -1 : 1;
    }
    return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

} // namespace larkspin
