#include "platform/terminal/screen/true_colors.h"

#include "platform/terminal/screen/shown_colors.h"

#include <algorithm>
#include <charconv>

namespace larkspin {

int TrueColors::numberOf(Rgb color) {
    auto found = std::ranges::find(colors_, color);
    if (found == colors_.end() && colors_.size() < most)
        found = colors_.insert(found, color);
    if (found == colors_.end())
        found = std::ranges::min_element(
            colors_, {}, [color](Rgb other) { return colorDifference(other, color); });
    return static_cast<int>(found - colors_.begin()) + static_cast<int>(first);
}

// The number stands in a sequence of its own, as in "ESC [38;5;16m".
std::string TrueColors::in(std::string_view bytes) const {
    constexpr std::string_view foreground = "\x1b[38;5;", background = "\x1b[48;5;";
    std::string shown;
    while (!bytes.empty()) {
        const std::size_t begin = std::min(bytes.find("\x1b["), bytes.size());
        shown += bytes.substr(0, begin);
        bytes.remove_prefix(begin);
        if (bytes.empty())
            break;
        const bool isColor = bytes.starts_with(foreground) || bytes.starts_with(background);
        const std::string_view digits = isColor ? bytes.substr(foreground.size()) : "";
        std::size_t number = 0;
        const char* const end =
            std::from_chars(digits.data(), digits.data() + digits.size(), number).ptr;
        if (number < first || number - first >= colors_.size()) {
            shown += bytes[0];
            bytes.remove_prefix(1);
            continue;
        }
        const Rgb color = colors_[number - first];
        shown += bytes.substr(0, 5); // "ESC [38;"
        shown += "2;" + std::to_string(color >> 16 & 0xFF) + ';' +
                 std::to_string(color >> 8 & 0xFF) + ';' + std::to_string(color & 0xFF);
        bytes.remove_prefix(static_cast<std::size_t>(end - bytes.data()));
    }
    return shown;
}

} // namespace larkspin
