#include "host/shown_line.h"

#include "text/utf8.h"

namespace larkspin {

std::string shortened(std::string text, std::size_t mostCharacters) {
    const std::size_t length = prefixLength(text, mostCharacters);
    if (length < text.size())
        text.replace(length, text.npos, "\u2026");
    return text;
}

} // namespace larkspin
