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
    bool atNextStart = false; // takes a new colour only then
};

struct ColorSlot {
    enum class Kind { styleColor, foreground, background };

    std::string_view name; // in the colour window
    std::string_view key;  // in the settings
    Kind kind;

    // Of a style colour, which shows in no control but in what is said, there is none of these.
    Color design = black;            // while the settings hold no colour
    std::string_view savedFrom = {}; // of the media window: its colour is kept
    std::span<const ColoredControl> controls = {};
};

// In the order in which they are offered.
std::span<const ColorSlot> colorSlots();

} // namespace larkspin
