// The colours and signs in which windows, menus and boxes are drawn on a terminal. Whatever is told
// by a colour is told by an attribute or a sign as well, since a terminal may have no colours.
#pragma once

#include "platform/terminal/screen/cells.h"
#include "shell/window.h"

#include <functional>
#include <string>
#include <string_view>

namespace larkspin {

Rgb rgbOf(Color color);

struct TwoColors {
    Color foreground = aqua, background = black;
};

CellStyle plainIn(const TwoColors& colors);
CellStyle dimIn(const TwoColors& colors);    // outlines, and what is told beside the rest
CellStyle raisedIn(const TwoColors& colors); // what text is typed into, and what the mouse is over

// Where a colour was chosen that can't be told from its ground at a glance: one that can.
TwoColors legible(const TwoColors& colors);

// What a caption reads on a terminal. The windows were designed with fonts of symbols.
std::string captionOf(const std::string& caption);

// As an eye may see it, on one line.
std::string seenText(std::string_view text);

// After this many blanks a row holds what isn't to be seen, such as a song's path.
std::string_view seenOfRow(std::string_view row);

// A frame of thin lines.
void drawFrame(Cells& cells, const Area& area, const CellStyle& style);

// Beside a list of which not all is in sight: where it is. `shown` of `count` rows from `first` on.
struct Extent {
    int first = 0, shown = 0, count = 0;
};
void drawScrollMark(Cells& cells, const Area& column, const Extent& extent, const CellStyle& style);

} // namespace larkspin
