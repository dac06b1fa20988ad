// The media window's file menu: media into the playlist, by dialog.
#pragma once

#include "chat/core.h"
#include "shell/menu.h"

#include <vector>

namespace larkspin {

class Adding;
class BehindSplash;
class Desktop;

class FileMenu {
public:
    FileMenu(const Core& core, Desktop& desktop, BehindSplash& behindSplash, Adding& adding)
        : state_(core.state), dialogs_(core.dialogs), desktop_(desktop),
          behindSplash_(behindSplash), adding_(adding) {}

    void popUp();

private:
    std::vector<MenuEntry> entries();
    void askForDirectory();
    void addString();

    AppState& state_;
    Dialogs& dialogs_;
    Desktop& desktop_;
    BehindSplash& behindSplash_;
    Adding& adding_;
};

} // namespace larkspin
