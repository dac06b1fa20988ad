// A window's place in twips as cells of a terminal. What lies apart on the desktop lies apart here,
// what stands in a row or in a column there does so here, and each control has the room that it
// needs, as far as the screen has it: a window is shrunk as far as it can be, and no wider than the
// screen. One that is too high all the same is scrolled by whoever shows it.
#pragma once

#include "platform/terminal/screen/cells.h"
#include "shell/window.h"

#include <vector>

namespace larkspin {

struct CellLayout {
    std::vector<Area> areas; // of each control, in their order; empty for those that don't show
    int rows = 0, columns = 0;
    bool hasStrip = false; // row 0 is the one by which the window is moved
};

// Whether the control is a part of the strip at the window's top.
bool isOnStrip(const Control& control);

// Whether a text field has several lines, which wrap.
bool hasSeveralLines(const Control& control);

// `needed` are the columns that each control needs, in their order; `most` bounds the whole.
struct CellBounds {
    int rows = 0, columns = 0;
};
CellLayout layOut(const Window& window, const std::vector<int>& needed, const CellBounds& most);

} // namespace larkspin
