// The port to what a desktop has beside windows: a tray icon and popup menus. Each call returns at
// once; what the owner then does comes as an event of its own. Without a tray or a screen nothing
// happens.
#pragma once

#include "shell/event_loop.h"
#include "shell/menu.h"

namespace larkspin {

struct TrayIcon {
    Menu menu;          // pops up by a right click
    Task onDoubleClick; // of the left button
};

class Desktop {
public:
    virtual ~Desktop() = default;

    // One icon at most: another one takes the place of the first.
    virtual void addTrayIcon(const TrayIcon& icon) = 0;
    virtual void removeTrayIcon() = 0;

    // Shows the menu where the pointer is, in place of one that is open. When the pointer is
    // outside of the program, it shows over what has the keyboard.
    virtual void popUp(const Menu& menu) = 0;
};

} // namespace larkspin
