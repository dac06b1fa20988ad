// A text taken apart at a separator. All parts are views into it.
#pragma once

#include <string_view>

namespace larkspin {

struct Parts {
    std::string_view head, tail;
    bool isParted; // without a separator all of the text is the head
};

// At the first one. It belongs to neither part.
constexpr Parts partedAt(std::string_view text, char separator) {
    const auto end = text.find(separator);
    if (end == std::string_view::npos)
        return {text, {}, false};
    return {text.substr(0, end), text.substr(end + 1), true};
}

// Takes the part up to the separator off the front, and the separator with it.
constexpr std::string_view takePart(std::string_view& rest, char separator) {
    const Parts parts = partedAt(rest, separator);
    rest = parts.tail;
    return parts.head;
}

} // namespace larkspin
