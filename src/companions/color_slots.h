// What the owner can give colours to, as a table: the slots that the colour window offers, each
// with its key in the settings and the controls that show its colour.
#pragma once

#include "shell/window.h"

#include <span>
#include <string_view>

namespace larkspin {

// A control by its window and name; the window itself where there is no name.
struct ColoredControl {
    std::string_view window, name;
    bool atNextStart = false; // takes a new colour only when the program starts again
};

struct ColorSlot {
    enum class Kind { styleColor, foreground, background };

    std::string_view name; // in the colour window
    std::string_view key;  // in the settings
    Kind kind;

    // A style colour has none of these, since it shows in what is said and in no control.
    Color design = black;            // while the settings hold no colour
    std::string_view savedFrom = {}; // the control of the media window whose colour is saved
    std::span<const ColoredControl> controls = {};
};

// In the order in which they are offered.
std::span<const ColorSlot> colorSlots();

} // namespace larkspin
