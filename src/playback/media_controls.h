// What stands on the media window, so far: the title strip, the playlist, and the buttons for
// files, menus, the refresh and a section to be repeated.
#pragma once

#include "chat/core.h"
#include "shell/window.h"

#include <vector>

namespace larkspin {

class Adding;
class Desktop;
class MediaWindow;
class OpsMenu;
class RefreshButton;
class Removing;
class SectionRepeat;
class SongFiles;
class Splash;
class Transport;

class MediaControls {
public:
    MediaControls(const Core& core, Desktop& desktop, MediaWindow& window, Splash& splash,
                  Adding& adding, Removing& removing, Transport& transport, SectionRepeat& section,
                  SongFiles& songFiles, OpsMenu& opsMenu, RefreshButton& refreshButton)
        : state_(core.state), loop_(core.loop), dialogs_(core.dialogs), desktop_(desktop),
          window_(window), splash_(splash), adding_(adding), removing_(removing),
          transport_(transport), section_(section), songFiles_(songFiles), opsMenu_(opsMenu),
          refreshButton_(refreshButton) {}

    std::vector<Control> list();

private:
    void hint(std::string_view text);
    void openFile();
    void popUpFileMenu();
    void addString();
    void popUpEditMenu();
    void removeString();

    AppState& state_;
    EventLoop& loop_;
    Dialogs& dialogs_;
    Desktop& desktop_;
    MediaWindow& window_;
    Splash& splash_;
    Adding& adding_;
    Removing& removing_;
    Transport& transport_;
    SectionRepeat& section_;
    SongFiles& songFiles_;
    OpsMenu& opsMenu_;
    RefreshButton& refreshButton_;
};

} // namespace larkspin
