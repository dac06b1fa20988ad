// Windows as data: a window is described once, without a toolkit, by the unit that owns it. A
// desktop draws any such description and keeps it in step with the state; a test clicks a
// control by its name. Without a desktop nothing is drawn and all else works.
//
// Places and sizes are in twips, 1/1440 of an inch.
#pragma once

#include "shell/event_loop.h"

#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

namespace larkspin {

struct Place {
    int left = 0, top = 0, width = 0, height = 0;
};

struct Control {
    enum class Kind { label, button, list, textField, slider };

    std::string name;
    Kind kind = Kind::label;
    Place place = {}; // within the window
    std::string font = {};
    std::function<std::string()> text = {}; // what it shows now
    std::function<void()> onMouseDown = {}, onDoubleClick = {};
    bool visible = true;
};

struct Window {
    std::string name;
    Place place;
    std::vector<Control> controls;
    bool visible = false;
    bool onTop = false;   // stays above the windows of all other programs
    bool dragged = false; // moves with the mouse until its button is released
    int alpha = 255;      // 0 see-through, 255 opaque

    // The control must exist.
    Control& control(const std::string& wanted) {
        for (Control& candidate : controls)
            if (candidate.name == wanted)
                return candidate;
        std::abort();
    }
};

// Stays above the windows of all other programs from now on.
inline void keepontop(Window& window) {
    window.onTop = true;
}

// Lets a label serve as title bar: called when the mouse goes down on it.
inline void dragwindow(EventLoop& loop, Window& window) {
    loop.serveTurn();
    window.dragged = true;
}

} // namespace larkspin
