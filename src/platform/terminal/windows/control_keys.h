// What keys do to a control that has the focus. Space, Return and the arrows mean to each kind what
// they mean to it on the desktop; what comes of them goes through shell/control_events.
#pragma once

#include "platform/terminal/screen/strokes.h"
#include "platform/terminal/windows/control_drawing.h"
#include "platform/terminal/windows/menu_layer.h"
#include "shell/window.h"

#include <string>

namespace larkspin {

// A control that is shown, as keys and the mouse reach it. Nothing of it may be used after an event
// of it has been called, but for the window and the name.
struct ControlTarget {
    Window& window;
    const Control& control;
    ControlState& state;
    std::string name;
    Area area{}; // on the screen
    MenuLayer& menu;
};

// Whether Tab leads to it.
bool takesFocus(const Control& control);

// Whether what is typed is edited there.
bool takesText(const Control& control);

// False for a key that means nothing there.
bool strike(const ControlTarget& target, const KeyStroke& key);
void paste(const ControlTarget& target, const std::string& text);

// Opens a combo's rows below it.
void openRows(const ControlTarget& target);

// In a list, the rows from the one to the other, which comes last.
std::vector<int> rowsBetween(int from, int to);

} // namespace larkspin
