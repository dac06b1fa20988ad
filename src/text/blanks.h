// Blanks around a text.
#pragma once

#include <string_view>

namespace larkspin {

inline std::string_view withoutBlanks(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

} // namespace larkspin
