// The media window's ops menu: playlists from and into files, and the sort list.
#pragma once

#include "chat/core.h"
#include "shell/menu.h"

#include <vector>

namespace larkspin {

class BehindSplash;
class DataDirectory;
class Desktop;
class PlaylistCommands;

class OpsMenu {
public:
    OpsMenu(const Core& core, Desktop& desktop, const DataDirectory& directory,
            BehindSplash& behindSplash, PlaylistCommands& playlists)
        : dialogs_(core.dialogs), desktop_(desktop), directory_(directory),
          behindSplash_(behindSplash), playlists_(playlists) {}

    void popUp();

    // Its entries for files.
    void load();
    void save();

private:
    std::vector<MenuEntry> entries();

    Dialogs& dialogs_;
    Desktop& desktop_;
    const DataDirectory& directory_;
    BehindSplash& behindSplash_;
    PlaylistCommands& playlists_;
};

} // namespace larkspin
