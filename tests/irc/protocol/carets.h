// Control characters as terminals write them: "^B" for 0x02, "^_" for 0x1F.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

inline std::string carets(std::string_view text) {
    std::string bytes;
    for (std::size_t at = 0; at < text.size(); ++at)
        bytes += text[at] == '^' ? static_cast<char>(text[++at] & 0x1F) : text[at];
    return bytes;
}

} // namespace larkspin
