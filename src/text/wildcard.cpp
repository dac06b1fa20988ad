#include "text/wildcard.h"

#include "text/fold.h"

#include <algorithm>
#include <cstddef>

namespace larkspin {

namespace {

template <typename Test> bool anyOf(std::string_view patterns, Test test) {
    for (;;) {
        const auto end = patterns.find(';');
        if (test(patterns.substr(0, end)))
            return true;
        if (end == std::string_view::npos)
            return false;
        patterns.remove_prefix(end + 1);
    }
}

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

// A scan asks this of every file. Nearly all patterns are like "*.mp3": the end of the name decides
// then, and is compared without a folded copy as long as it is pure ASCII.
bool fitsFolded(std::string_view text, std::string_view pattern) {
    const bool isEnding = pattern.starts_with('*') && pattern.find('*', 1) == pattern.npos;
    const std::size_t length = pattern.size() - 1;
    const auto end = text.substr(text.size() - std::min(text.size(), length));
    if (isEnding && isAscii(end))
        return end.size() == length && equalFolded(end, pattern.substr(1));
    return fits(foldCase(text), pattern);
}

} // namespace

bool fits(std::string_view text, std::string_view pattern) {
    std::size_t at = 0, in = 0;
    // Where the last star stands in the pattern, and where the run of characters that it takes
    // ends. After a mismatch only this star has to take one more: it can take whatever an earlier
    // one could.
    std::size_t star = std::string_view::npos, runEnd = 0;
    while (at < text.size()) {
        if (in < pattern.size() && pattern[in] == '*') {
            star = in++;
            runEnd = at;
        } else if (in < pattern.size() && pattern[in] == text[at]) {
            ++in;
            ++at;
        } else if (star != std::string_view::npos) {
            in = star + 1;
            at = ++runEnd;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', in) == std::string_view::npos;
}

bool fitsAny(std::string_view text, std::string_view patterns) {
    return anyOf(patterns, [text](std::string_view pattern) { return fits(text, pattern); });
}

bool fitsAnyFolded(std::string_view text, std::string_view patterns) {
    return anyOf(patterns, [text](std::string_view pattern) { return fitsFolded(text, pattern); });
}

} // namespace larkspin
