#include "text/wildcard.h"

#include "text/characters.h"
#include "text/fold.h"
#include "text/parts.h"

#include <algorithm>
#include <cstddef>

namespace larkspin {

namespace {

// A scan asks this of every file. Nearly all patterns are like "*.mp3": the end of the name decides
// then, and is compared without a folded copy as long as it is pure ASCII.
bool fitsFolded(std::string_view text, std::string_view pattern) {
    const bool isEnding = pattern.starts_with('*') && pattern.find('*', 1) == pattern.npos;
    const std::size_t length = pattern.size() - 1;
    const auto end = text.substr(text.size() - std::min(text.size(), length));
    if (isEnding && std::ranges::all_of(end, isAscii))
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

bool fitsAnyFolded(std::string_view text, std::string_view patterns) {
    while (!patterns.empty())
        if (fitsFolded(text, takePart(patterns, ';')))
            return true;
    return false;
}

} // namespace larkspin
