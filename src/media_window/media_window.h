// The media window put together: its frame, what stands on it, and what the owner does there with
// the playlist and the song in play.
#pragma once

#include "chat/core.h"
#include "media_window/behind_splash.h"
#include "media_window/edit_menu.h"
#include "media_window/file_menu.h"
#include "media_window/media_frame.h"
#include "media_window/media_list.h"
#include "media_window/ops_menu.h"
#include "media_window/refresh_button.h"
#include "media_window/row_menu.h"
#include "shell/settings.h"

namespace larkspin {

struct Library;
struct Playback;
struct Shell;

// What the media window uses of the machine and of the floors below, beside the core.
struct MediaWindowNeeds {
    Files& files;
    Directories& directories;
    MediaControl& player;
    Desktop& desktop;
    Shell& shell;
    Library& library;
    Playback& playback;
    RowMenu::OpenFolder openFolder;
};

struct MediaWindow {
    MediaWindow(const Core& core, const MediaWindowNeeds& needs);

    MediaFrame frame;
    MediaList list;
    BehindSplash behindSplash;
    FileMenu fileMenu;
    EditMenu editMenu;
    OpsMenu opsMenu;
    RefreshButton refreshButton;
    RowMenu rowMenu;

    void load(const StoredSettings& stored) { frame.load(stored); }
    void save(SettingsChanges& changes) const { frame.save(changes); }
    void unload() { frame.mp3s.visible = false; }

    // Its share of the one-second tick: in the mini height the title is a clock.
    void showPosition();

private:
    Playback& playback_;
};

} // namespace larkspin
