// Playback put together: everything about the song in play.
#pragma once

#include "chat/core.h"
#include "playback/choices.h"
#include "playback/counter_commands.h"
#include "playback/media_controls.h"
#include "playback/media_window.h"
#include "playback/mode_tick.h"
#include "playback/play_counters.h"
#include "playback/play_modes.h"
#include "playback/play_selection.h"
#include "playback/random_pick.h"
#include "playback/sliders.h"
#include "playback/transport.h"
#include "shell/settings.h"

namespace larkspin {

class DataDirectory;

struct Playback {
    // Of the machine and of the floors below, what playback works with beside the core.
    struct Needs {
        Files& files;
        MediaControl& player;
        Desktop& desktop;
        const DataDirectory& directory;
        Splash& splash;
        Adding& adding;
        Scanner& NiteScan2;
    };
    Playback(const Core& core, const Needs& needs);

    Sliders sliders;
    PlayCounters counters;
    CounterCommands counterCommands;
    Choices choices;
    MediaWindow mediaWindow;
    Transport transport;
    PlayModes modes;
    RandomPick randomPick;
    PlaySelection selection;
    ModeTick modeTick;
    MediaControls mediaControls;

    void load(const StoredSettings& stored);
    void save(SettingsChanges& changes) const;
    void unload();

    // The shares of the one-second tick: the media window's clock, and the end of a song.
    void showPosition();
    void checkEnd() { modeTick.checkEndWithoutMode(); }
    bool isPlaying();

private:
    Core core_;
    MediaControl& player_;
};

} // namespace larkspin
