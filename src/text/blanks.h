// Blanks around a text.
#pragma once

#include <string_view>

namespace larkspin {

inline std::string_view withoutBlanks(std::string_view text, std::string_view blanks = " ") {
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

} // namespace larkspin
