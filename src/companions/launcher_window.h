// The launcher's window `appz`: the titles of all items, the path of the selected one, and what the
// owner does there by hand. Nothing of it is said in the room but the start of an item.
#pragma once

#include "chat/core.h"
#include "shell/window.h"

#include <string>
#include <vector>

namespace larkspin {

class Launcher;
class LauncherItems;

class LauncherWindow {
public:
    LauncherWindow(const Core& core, LauncherItems& items, Launcher& launcher);

    // The command, and the tray's entry, which does the same without saying anything.
    void apps();
    void show() { showOnTop(appz); }

    // Hides the window, puts it in its first place and points at nothing, as it is when a run
    // begins.
    void reset();

    Window appz{.name = "appz", .spoken = "larkspin applications"};

private:
    std::vector<Control> controls();
    void click();
    void addFromDisk();
    void deleteSelected();

    AppState& state_;
    EventLoop& loop_;
    Dialogs& dialogs_;
    Reply& reply_;
    LauncherItems& items_;
    Launcher& launcher_;
    std::string title_; // of the strip: a hint while the mouse is on it
};

} // namespace larkspin
