// The media window's ops menu: playlists from and into files, and the sort list.
#pragma once

#include "chat/core.h"
#include "shell/menu.h"

#include <vector>

namespace larkspin {

class DataDirectory;
class Desktop;
class MediaWindow;
class PlaylistCommands;
class Splash;

class OpsMenu {
public:
    OpsMenu(const Core& core, Desktop& desktop, const DataDirectory& directory, Splash& splash,
            MediaWindow& window, PlaylistCommands& playlists)
        : loop_(core.loop), dialogs_(core.dialogs), desktop_(desktop), directory_(directory),
          splash_(splash), window_(window), playlists_(playlists) {}

    void popUp();

private:
    std::vector<MenuEntry> entries();
    void load();
    void save();

    EventLoop& loop_;
    Dialogs& dialogs_;
    Desktop& desktop_;
    const DataDirectory& directory_;
    Splash& splash_;
    MediaWindow& window_;
    PlaylistCommands& playlists_;
};

} // namespace larkspin
