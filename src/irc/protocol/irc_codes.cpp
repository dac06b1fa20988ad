#include "irc/protocol/irc_codes.h"

#include <algorithm>
#include <charconv>
#include <iterator>

namespace larkspin {

namespace {

enum : char {
    bold = 0x02,
    numberedColor = 0x03,
    directColor = 0x04,
    plain = 0x0F,
    monospace = 0x11,
    reverse = 0x16,
    italic = 0x1D,
    struckThrough = 0x1E,
    underlined = 0x1F,
};

// The colours by their numbers: the sixteen, then the 83 that only newer programs know.
constexpr std::size_t knownByAll = 16, white = 0, black = 1;
constexpr std::uint32_t colors[] = {
    0xFFFFFF, 0x000000, 0x00007F, 0x009300, 0xFF0000, 0x7F0000, 0x9C009C, 0xFC7F00, 0xFFFF00,
    0x00FC00, 0x009393, 0x00FFFF, 0x0000FC, 0xFF00FF, 0x7F7F7F, 0xD2D2D2, 0x470000, 0x472100,
    0x474700, 0x324700, 0x004700, 0x00472C, 0x004747, 0x002747, 0x000047, 0x2E0047, 0x470047,
    0x47002A, 0x740000, 0x743A00, 0x747400, 0x517400, 0x007400, 0x007449, 0x007474, 0x004074,
    0x000074, 0x4B0074, 0x740074, 0x740045, 0xB50000, 0xB56300, 0xB5B500, 0x7DB500, 0x00B500,
    0x00B571, 0x00B5B5, 0x0063B5, 0x0000B5, 0x7500B5, 0xB500B5, 0xB5006B, 0xFF0000, 0xFF8C00,
    0xFFFF00, 0xB2FF00, 0x00FF00, 0x00FFA0, 0x00FFFF, 0x008CFF, 0x0000FF, 0xA500FF, 0xFF00FF,
    0xFF0098, 0xFF5959, 0xFFB459, 0xFFFF71, 0xCFFF60, 0x6FFF6F, 0x65FFC9, 0x6DFFFF, 0x59B4FF,
    0x5959FF, 0xC459FF, 0xFF66FF, 0xFF59BC, 0xFF9C9C, 0xFFD39C, 0xFFFF9C, 0xE2FF9C, 0x9CFF9C,
    0x9CFFDB, 0x9CFFFF, 0x9CD3FF, 0x9C9CFF, 0xDC9CFF, 0xFF9CFF, 0xFF94D3, 0x000000, 0x131313,
    0x282828, 0x363636, 0x4D4D4D, 0x656565, 0x818181, 0x9F9F9F, 0xBCBCBC, 0xE2E2E2, 0xFFFFFF,
};

// How different two colours look. The eye sees green best, and red better than blue where there is
// much red.
int difference(std::uint32_t a, std::uint32_t b) {
    const auto part = [](std::uint32_t color, int shift) {
        return static_cast<int>(color >> shift & 0xFF);
    };
    const int meanRed = (part(a, 16) + part(b, 16)) / 2;
    const int red = part(a, 16) - part(b, 16), green = part(a, 8) - part(b, 8),
              blue = part(a, 0) - part(b, 0);
    return (512 + meanRed) * red * red / 256 + 4 * green * green +
           (767 - meanRed) * blue * blue / 256;
}

// The number of the nearest one among the sixteen; nothing for a colour that is left to the reader.
std::optional<std::size_t> numberOf(std::optional<std::uint32_t> color) {
    if (!color)
        return std::nullopt;
    const auto nearest =
        std::min_element(colors, colors + knownByAll, [&](std::uint32_t a, std::uint32_t b) {
            return difference(a, *color) < difference(b, *color);
        });
    const auto number = static_cast<std::size_t>(nearest - colors);
    return number == white || number == black ? std::nullopt : std::optional(number);
}

struct Digits {
    int base;
    std::size_t fewest, most;
};
constexpr Digits numbered{10, 1, 2}, direct{16, 6, 6};

std::optional<std::uint32_t> takeNumber(std::string_view& text, const Digits& digits) {
    const char* const begin = text.data();
    std::uint32_t number = 0;
    const char* const end =
        std::from_chars(begin, begin + std::min(text.size(), digits.most), number, digits.base).ptr;
    const auto length = static_cast<std::size_t>(end - begin);
    if (length < digits.fewest)
        return std::nullopt;
    text.remove_prefix(length);
    return number;
}

std::optional<std::uint32_t> colorOf(std::uint32_t number, const Digits& digits) {
    const bool isDirect = digits.base == direct.base;
    if (!isDirect && number >= std::size(colors))
        return std::nullopt;
    const std::uint32_t color = isDirect ? number : colors[number];
    return numberOf(color) ? std::optional(color) : std::nullopt;
}

// Takes a colour's code. Without a number it ends the last colour, and what follows is text. A
// second number, after a comma, is a background.
std::size_t takeColor(std::string_view text, const Digits& digits, MarkupStyle& style) {
    std::string_view rest = text.substr(1);
    const auto number = takeNumber(rest, digits);
    style.color = number ? colorOf(*number, digits) : std::nullopt;
    if (number && rest.starts_with(',')) {
        std::string_view after = rest.substr(1);
        if (takeNumber(after, digits))
            rest = after;
    }
    return text.size() - rest.size();
}

} // namespace

std::size_t takeIrcCode(std::string_view text, MarkupStyle& style) {
    switch (text.empty() ? '\0' : text.front()) {
    case bold:
        style.bold = !style.bold;
        return 1;
    case italic:
        style.italic = !style.italic;
        return 1;
    case underlined:
        style.underlined = !style.underlined;
        return 1;
    case plain:
        style = {};
        return 1;
    // The client's markup has nothing for these three, so the code is dropped.
    case monospace:
    case reverse:
    case struckThrough:
        return 1;
    case numberedColor:
        return takeColor(text, numbered, style);
    case directColor:
        return takeColor(text, direct, style);
    default:
        return 0;
    }
}

// A colour is ended by the code that resets everything, since after a bare 0x03 digits of the text
// would be read as a colour. A comma at the beginning of the text would make a colour before it one
// with a background. Two codes for bold, which change nothing, keep the two apart.
std::string ircCodesBetween(const MarkupStyle& from, const MarkupStyle& to, std::string_view text) {
    std::string codes;
    MarkupStyle now = from;
    const auto had = numberOf(from.color);
    const auto wanted = numberOf(to.color);
    if (had && !wanted) {
        codes.push_back(plain);
        now = {};
    } else if (wanted != had) {
        const char digits[] = {numberedColor, static_cast<char>('0' + *wanted / 10),
                               static_cast<char>('0' + *wanted % 10)};
        codes.append(digits, std::size(digits));
    }
    const std::size_t afterColor = codes.size();
    if (now.bold != to.bold)
        codes.push_back(bold);
    if (now.italic != to.italic)
        codes.push_back(italic);
    if (now.underlined != to.underlined)
        codes.push_back(underlined);
    if (codes.size() == afterColor && wanted != had && text.starts_with(','))
        codes += {bold, bold};
    return codes;
}

} // namespace larkspin
