// The media window's file menu: media into the playlist, by dialog.
#pragma once

#include "chat/core.h"
#include "library/directories.h"
#include "shell/menu.h"

#include <string>
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

    // Adds what the owner drops on the list: files as the menu's entry for files adds them, and
    // directories as the one for directories does.
    void addDropped(const std::vector<std::string>& paths);

private:
    std::vector<MenuEntry> entries();
    void askForDirectory();
    bool addDirectory(const DirectoryListing& directory); // false: the run has ended
    void addString();

    AppState& state_;
    Dialogs& dialogs_;
    Desktop& desktop_;
    BehindSplash& behindSplash_;
    Adding& adding_;
};

} // namespace larkspin
