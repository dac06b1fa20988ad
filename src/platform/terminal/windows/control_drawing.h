// A described control drawn in cells, each kind in its own way, in the colours of its description.
#pragma once

#include "platform/terminal/screen/edited_text.h"
#include "platform/terminal/screen/layers.h"
#include "platform/terminal/windows/cell_looks.h"
#include "shell/window.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

// What belongs to the eyes and the hand of whoever looks at a control, and to nobody else.
struct ControlState {
    static constexpr std::size_t longestText = 32767;

    int first = 0;     // the row, or the line of a text, that stands uppermost
    int followed = -1; // the current row that has been brought into sight
    int anchor = -1;   // the row from which rows are selected
    static constexpr int onScrollMark = -2;
    int pressed = -1;              // the row on which the button went down, or that
    std::optional<Area> dragged{}; // rows that the mouse is being drawn over, as `top` and `rows`
    int draggedTo = -1;            // the last of them
    EditedText text{longestText};  // of a field
    std::string described{};       // what its description read last
    std::size_t firstShown = 0;    // character of it
};

// How a control is met at the moment.
struct ControlSight {
    const Control& control;
    Area area{}; // on the screen, perhaps outside of `clip`
    bool hasFocus = false, isPressed = false, isUnderMouse = false;
};

// Draws on those rows of the screen alone that a window has for its controls.
class Pen {
public:
    Pen(Cells& cells, const Area& clip) : cells_(cells), clip_(clip) {}

    void fill(const Area& area, const CellStyle& style) { cells_.fill(area.within(clip_), style); }
    int put(int row, int column, int right, std::string_view text, const CellStyle& style) {
        return has(row) ? cells_.put(row, column, right, text, style) : column;
    }
    void putCut(int row, int column, int right, std::string_view text, const CellStyle& style) {
        if (has(row))
            cells_.putCut(row, column, right, text, style);
    }
    bool has(int row) const { return row >= clip_.top && row < clip_.bottom(); }
    Cells& cells() const { return cells_; }
    const Area& clip() const { return clip_; }

private:
    Cells& cells_;
    Area clip_;
};

// How many columns it needs for all that it shows to be read.
int neededColumns(const Control& control);

// Gives where the cursor stands if the control has the focus.
Cursor draw(Pen& pen, const ControlSight& sight, ControlState& state);

// A field reads what its description does, unless that is what has been typed.
void readDescription(const Control& field, ControlState& state);

// The lines of a text that wraps in so many columns.
std::vector<std::string> linesOf(std::string_view text, int columns);

// Where the first of `count` rows may be when `shown` of them are in sight.
int boundedFirst(int first, int shown, int count);

// On a slider that has so many columns: the column of its handle, and the value that one means.
int columnOf(const Control& slider, int columns);
int valueAt(const Control& slider, int columns, int column);

} // namespace larkspin
