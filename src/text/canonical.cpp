#include "text/canonical.h"

#include "text/utf8.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <utility>

namespace larkspin {

namespace {

struct Decomposition {
    char32_t code, first, second;
};

struct Composite {
    char32_t first, second, code;
};

struct ClassRange {
    char32_t first, last;
    int combiningClass; // in which order marks stand; 0 for what is none
};

struct CodeRange {
    char32_t first, last;
};

#include "text/canonical_tables.inc"

// Which blocks of 64 characters have at least one character in a table. Nearly all letters are in
// blocks without one, so one look spares the search.
constexpr std::size_t blockSize = 64;
constexpr auto blocksInTables = [] {
    std::array<bool, 0x30000 / blockSize> blocks{};
    for (const auto& [first, last, combiningClass] : joining)
        for (auto block = first / blockSize; block <= last / blockSize; ++block)
            blocks[block] = true;
    for (const auto& [first, last] : respelled)
        for (auto block = first / blockSize; block <= last / blockSize; ++block)
            blocks[block] = true;
    return blocks;
}();

bool mayBeInTable(char32_t code) {
    return code / blockSize < blocksInTables.size() && blocksInTables[code / blockSize];
}

template <typename Range, std::size_t count>
const Range* find(const Range (&ranges)[count], char32_t code) {
    if (!mayBeInTable(code))
        return nullptr;
    const auto range =
        std::lower_bound(std::begin(ranges), std::end(ranges), code,
                         [](const Range& candidate, char32_t c) { return candidate.last < c; });
    return range != std::end(ranges) && code >= range->first ? range : nullptr;
}

int classOf(char32_t code) {
    const ClassRange* const range = find(joining, code);
    return range ? range->combiningClass : 0;
}

// Hangul syllables stand in no table: the number of a syllable is computed from the numbers of its
// leading consonant, its vowel and its final consonant, the tail, which may be missing.
constexpr char32_t syllableBase = 0xAC00, leadBase = 0x1100, vowelBase = 0x1161, tailBase = 0x11A7;
constexpr char32_t leads = 19, vowels = 21, tails = 28; // no tail is the first of these

bool isNumbered(char32_t code, char32_t base, char32_t count) {
    return code >= base && code < base + count;
}

// Appends the character taken apart to the end: its parts may have parts themselves.
void appendParts(std::u32string& text, char32_t code) {
    if (isNumbered(code, syllableBase, leads * vowels * tails)) {
        const char32_t number = code - syllableBase, tail = number % tails;
        text.push_back(leadBase + number / (vowels * tails));
        text.push_back(vowelBase + number / tails % vowels);
        if (tail > 0)
            text.push_back(tailBase + tail);
        return;
    }
    const auto found =
        std::lower_bound(std::begin(parts), std::end(parts), code,
                         [](const Decomposition& p, char32_t c) { return p.code < c; });
    if (found == std::end(parts) || found->code != code) {
        text += code;
        return;
    }
    appendParts(text, found->first);
    if (found->second != 0)
        appendParts(text, found->second);
}

// Sorts each run of marks by their combining classes. Marks of one class keep their order, since
// among those the order has a meaning.
void order(std::u32string& text) {
    const auto isMark = [](char32_t code) { return classOf(code) > 0; };
    for (auto at = text.begin(); at != text.end();) {
        at = std::find_if(at, text.end(), isMark);
        const auto end = std::find_if_not(at, text.end(), isMark);
        std::stable_sort(at, end, [](char32_t a, char32_t b) { return classOf(a) < classOf(b); });
        at = end;
    }
}

std::optional<char32_t> compositeOf(char32_t first, char32_t second) {
    // Hangul syllables are composed by computing, all other characters by the table.
    if (isNumbered(first, leadBase, leads) && isNumbered(second, vowelBase, vowels))
        return syllableBase + ((first - leadBase) * vowels + (second - vowelBase)) * tails;
    if (isNumbered(first, syllableBase, leads * vowels * tails) &&
        (first - syllableBase) % tails == 0 && isNumbered(second, tailBase + 1, tails - 1))
        return first + (second - tailBase);
    const auto found =
        std::lower_bound(std::begin(composites), std::end(composites), std::pair(first, second),
                         [](const Composite& candidate, const auto& pair) {
                             return std::pair(candidate.first, candidate.second) < pair;
                         });
    const bool isThere =
        found != std::end(composites) && found->first == first && found->second == second;
    return isThere ? std::optional(found->code) : std::nullopt;
}

} // namespace

std::size_t clusterLength(std::string_view text) {
    const Character first = firstCharacter(text);
    std::size_t length = first.length;
    while (first.valid && length < text.size()) {
        const Character next = firstCharacter(text.substr(length));
        if (!next.valid || !find(joining, next.code))
            break;
        length += next.length;
    }
    return length;
}

bool isRespelled(char32_t code) {
    return find(respelled, code) != nullptr;
}

// A character joins the last base (a character that is no mark), unless another base, or a mark of
// the character's own class or a higher one, stands between the two.
void compose(std::u32string& cluster) {
    std::u32string apart;
    for (const char32_t code : cluster)
        appendParts(apart, code);
    order(apart);
    cluster.clear();
    std::optional<std::size_t> base;
    int lastClass = 0; // of what stands after the base
    for (const char32_t code : apart) {
        const int itsClass = classOf(code);
        const bool isNext = base && *base + 1 == cluster.size();
        if (base && (isNext || lastClass < itsClass)) {
            if (const auto composite = compositeOf(cluster[*base], code)) {
                cluster[*base] = *composite;
                continue;
            }
        }
        if (itsClass == 0)
            base = cluster.size();
        lastClass = itsClass;
        cluster += code;
    }
}

} // namespace larkspin
