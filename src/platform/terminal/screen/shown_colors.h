// The colours that a terminal can show, by their numbers there.
#pragma once

#include "platform/terminal/screen/cells.h"

namespace larkspin {

// As many as have no grounds between black and the others.
inline constexpr int fewColors = 16;

// The number of the nearest one. Of 256 colours, the first 16 are left alone, since each owner has
// his own idea of them; with fewer there is nothing else.
int nearestColor(Rgb color, int colors);

// Those of a style; -1 is the terminal's own. Where they are few, what would hardly be seen on its
// ground is black or white, gray on the terminal's own ground is as the terminal's own text, and a
// strip has its colours the other way round.
struct ShownColors {
    int foreground, background;

    bool operator==(const ShownColors&) const = default;
};
ShownColors shownColors(const CellStyle& style, int colors);

// How different two colours look to an eye.
int colorDifference(Rgb one, Rgb other);

} // namespace larkspin
