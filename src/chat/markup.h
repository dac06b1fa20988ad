// The markup of the chat client that lines are said in: bold, underline, italics, font, colour,
// links. A room or a window that shows a line reads it here into pieces of plain text with a style
// each.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

struct MarkupStyle {
    bool bold = false, underlined = false, italic = false;
    std::optional<std::uint32_t> color = {}; // 0xRRGGBB; nothing for the reader's own
    std::string_view face = {};              // of the font; blank for the reader's own

    bool operator==(const MarkupStyle&) const = default;
};

struct MarkupPiece {
    std::string_view text; // never empty
    MarkupStyle style;
};

// The text without its tags, in order. What is no tag of the client's stays in the text as it is:
// "<3", a tag of another kind, one that nobody closes. A link is its text with the address after
// it, so that nobody is led elsewhere than he reads. The pieces are views into the line. Takes time
//  in proportion to the line's length, whatever it holds.
std::vector<MarkupPiece> readMarkup(std::string_view line);

// The line without its tags, as plain text on one line that an eye may see.
std::string plainMarkup(std::string_view line);

// A text that isn't meant as markup: U+200C stands after a bracket that would open a tag.
// `text/visible.h` leaves it out of what is shown.
std::string withoutTags(std::string_view text);

// A message with the names in it as they are seen: stand-ins (see `text/stand_ins.h`) as what they
// stand for, and none of them opens a tag.
std::string asSeenInMarkup(std::string_view message);

// Takes out what `withoutTags` has put in, for a network that has no tags.
std::string withoutTagBreaks(std::string_view text);

} // namespace larkspin
