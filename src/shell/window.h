// Windows as data: a window is described once, without a toolkit, by the unit that owns it. A
// desktop draws any such description and keeps it in step with the state; a terminal prints it and
// works its controls by name, and so does a test. What a press or a stroke does to a control is
// told in control_events.h, the same for all of them.
//
// Places and sizes are in twips, 1/1440 of an inch. Nobody but its owner writes a window's place,
// and whoever moves it for the owner.
#pragma once

#include "shell/event_loop.h"

#include <cstdint>
#include <cstdlib>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

class RowList;

using Color = std::uint32_t; // red + 256 green + 65536 blue
inline constexpr Color black = 0;
inline constexpr Color aqua = 16776960;
inline constexpr Color red = 255;

struct Place {
    int left = 0, top = 0, width = 0, height = 0;
};

struct Font {
    std::string_view family = "Arial"; // a literal
    int points = 8;
};

// The keys that mean something to a control. All others belong to the front end.
enum class Key { enter, escape, del };

struct Control {
    enum class Kind { label, button, list, textField, slider, combo, swatch };

    std::string name;
    Kind kind = Kind::label;
    Place place = {}; // within the window
    // What a screen reader and a terminal call it where the caption is no word.
    std::string spoken = {};
    Font font = {};
    Color foreground = aqua, background = black;

    // What it shows now. Empty where there is nothing to show.
    std::function<std::string()> text = {}; // label, button, text field
    RowList* rows = nullptr;                // list, combo: rows and selection, which is the user's
    bool selectsMany = false;               // list: more than its current row can be selected
    std::function<int()> markedRow = {};    // list: one that stands out; -1 for none
    std::string markedAs = {};              // what is told of that row
    std::function<int()> value = {};        // slider
    int least = 0, most = 0;                // slider: the range of its value

    // What its events call. Empty where nothing happens.
    Task onClick = {}, onDoubleClick = {}, onMouseDown = {}, onMouseMove = {};
    std::function<void(Key)> onKey = {};
    std::function<void(int)> onChange = {}; // slider: moved to, or dragged over, a value
    std::function<void(const std::string&)> onEdit = {}; // text field: what it reads now
    // List: its menu is asked for, by a right click on a row or a key. The row is the current one.
    Task onMenu = {};

    bool keepsEscape = false; // that key doesn't close the window, since it means something here
    bool visible = true;
};

struct Window {
    std::string name;
    // What a screen reader and a list of windows call it.
    std::string spoken = {};
    Place place = {};
    std::vector<Control> controls = {};
    Color background = black;
    bool visible = false;
    int calls = 0;          // how often it has been brought up
    bool minimized = false; // out of sight, by whoever shows windows for the owner
    bool centred = false;   // in the middle of his screen, until he moves it
    bool beside = true;     // comes up beside his main window, where there is one, until then
    bool passes = false;    // comes and goes by itself: beside, out of the way of those that stay
    const Window* standsOn = nullptr; // whose place its own is described by
    bool onTop = false;               // stays above the windows of all other programs
    bool dragged = false;             // moves with the mouse until its button is released
    int alpha = 255;                  // 0 see-through, 255 opaque

    // Files and directories, let go anywhere over it with the mouse.
    std::function<void(const std::vector<std::string>& paths)> onDrop = {};

    // Nothing when there is no control of that name.
    Control* find(const std::string& wanted) {
        for (Control& candidate : controls)
            if (candidate.name == wanted)
                return &candidate;
        return nullptr;
    }

    // The control must exist.
    Control& control(const std::string& wanted) {
        if (Control* found = find(wanted))
            return *found;
        std::abort();
    }
};

// Stays above the windows of all other programs from now on.
inline void keepontop(Window& window) {
    window.onTop = true;
}

// Into the owner's sight, also when it is visible already: it may stand behind others, or be
// minimized.
inline void bringUp(Window& window) {
    window.visible = true;
    ++window.calls;
}

inline void showOnTop(Window& window) {
    bringUp(window);
    keepontop(window);
}

inline bool isInSight(const Window& window) {
    return window.visible && !window.minimized;
}

// As a run of the program ends: out of sight, and where it was first.
inline void putAway(Window& window, const Place& home) {
    window.visible = window.dragged = false;
    window.beside = true;
    window.place = home;
}

// Lets a label serve as title bar: called when the mouse goes down on it.
inline void dragwindow(EventLoop& loop, Window& window) {
    loop.serveTurn();
    window.dragged = true;
}

} // namespace larkspin
