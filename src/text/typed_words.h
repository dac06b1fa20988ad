// What is typed as a command, or a list of words, taken apart.
#pragma once

#include "text/parts.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace larkspin {

// Takes the first word off the front, with the blanks before it.
inline std::string_view takeWord(std::string_view& rest) {
    rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
    const std::string_view word = partedAt(rest, ' ').head;
    rest.remove_prefix(word.size());
    return word;
}

// What stands after the one blank that ends a word, as typed.
inline std::string textAfter(std::string_view rest) {
    return std::string(rest.substr(rest.empty() ? 0 : 1));
}

} // namespace larkspin
