// Playback put together: everything about the song in play.
#pragma once

#include "chat/core.h"
#include "playback/choice_recital.h"
#include "playback/choices.h"
#include "playback/counter_commands.h"
#include "playback/last_song.h"
#include "playback/mode_tick.h"
#include "playback/play_counters.h"
#include "playback/play_modes.h"
#include "playback/play_selection.h"
#include "playback/position.h"
#include "playback/random_pick.h"
#include "playback/remote_control.h"
#include "playback/section_repeat.h"
#include "playback/selection_dialogue.h"
#include "playback/sliders.h"
#include "playback/song_failures.h"
#include "playback/song_files.h"
#include "playback/song_in_play.h"
#include "playback/stop_window.h"
#include "playback/top_list.h"
#include "playback/transport.h"
#include "playback/transport_buttons.h"
#include "shell/settings.h"

namespace larkspin {

class DataDirectory;

// What playback uses of the machine and of the floors below, beside the core.
struct PlaybackNeeds {
    Room& room;
    Files& files;
    MediaControl& player;
    const DataDirectory& directory;
    Scanner& NiteScan2;
    CommandsWindow& commandsWindow;
};

struct Playback {
    Playback(const Core& core, const PlaybackNeeds& needs);

private: // what the units are made with
    Core core_;
    PlaybackNeeds needs_;

public:
    Sliders sliders{core_, needs_.player};
    PlayCounters counters{core_, needs_.directory};
    TopList topList{core_, needs_.files, needs_.directory};
    CounterCommands counterCommands{core_, counters, topList};
    Position position{core_, needs_.player};
    SectionRepeat section{core_, needs_.player};
    Choices choices{core_, needs_.NiteScan2, needs_.commandsWindow};
    ChoiceRecital recital{core_, choices};
    LastSong lastSong{core_};
    Transport transport{core_, needs_.files, needs_.player, sliders, counters, choices, lastSong};
    PlayModes modes{core_, transport};
    RandomPick randomPick{core_, choices, Chance::byClock(core_.loop)};
    PlaySelection selection{core_, transport, choices, randomPick};
    SongFiles songFiles{core_, needs_.files, counters, choices, transport, lastSong};
    SelectionDialogue dialogue{core_, needs_.room, choices, recital, selection, transport};
    StopWindow stopWindow{core_, needs_.room, dialogue, recital};
    SongFailures failures{core_, needs_.player, transport};
    ModeTick modeTick{core_, needs_.player, transport, counters, randomPick, failures};
    TransportButtons transportButtons{core_,     needs_.files, needs_.player,
                                      transport, choices,      randomPick};
    RemoteControl remote{core_, needs_.player, transportButtons, modes, sliders};
    SongInPlay songInPlay{core_, remote, transport, modes, sliders};

    void load(const StoredSettings& stored);
    void save(SettingsChanges& changes);
    void unload();

    // The shares of the one-second tick: the repeated section, and the end of a song.
    void checkSection() { section.check(); }
    void checkEnd() { modeTick.checkEndWithoutTick(); }
    bool isPlaying();
};

} // namespace larkspin
