#include "text/wildcard.h"

#include <cstddef>

namespace larkspin {

bool fits(std::string_view text, std::string_view pattern) {
    std::size_t at = 0, in = 0;
    // Where the last star stood and how far its run reaches; only the last one ever needs to
    // take more.
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
    for (;;) {
        const auto end = patterns.find(';');
        if (fits(text, patterns.substr(0, end)))
            return true;
        if (end == std::string_view::npos)
            return false;
        patterns.remove_prefix(end + 1);
    }
}

} // namespace larkspin
