// The program: all its parts, put together on the ports of one machine.
//
// Everything that happens comes in here: lines said in the room, ticks of the clocks, and the
// machine's wish that the process end.
#pragma once

#include "app/machine.h"
#include "chat/dispatch.h"
#include "chat/reply.h"
#include "chat/scanner.h"
#include "chat/silent_mode.h"
#include "chat/trigger_commands.h"
#include "library/adding.h"
#include "library/listers.h"
#include "library/media_filter.h"
#include "library/scan.h"
#include "playback/media_window.h"
#include "playback/mode_tick.h"
#include "playback/play_counters.h"
#include "playback/play_modes.h"
#include "playback/play_selection.h"
#include "playback/random_pick.h"
#include "playback/sliders.h"
#include "playback/transport.h"
#include "shell/app_state.h"
#include "shell/data_directory.h"
#include "shell/pause.h"
#include "shell/settings.h"
#include "shell/splash.h"

#include <vector>

namespace larkspin {

class Program {
public:
    explicit Program(const Machine& machine);
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    // Loads settings and lists, greets the room and starts listening. Returns when the program
    // runs. With another running copy the process ends instead.
    void start();

    // A line said in the room, by anyone. While the program isn't running it is dropped.
    void hear(const ChatLine& line);

    // Save and end the process: the owner's way, and the machine's, which says nothing. While
    // the program is still starting there is nothing to save.
    void exit();
    void end();

    // Saves, and starts again in the same process.
    void restart();

    // Once a second: the counters, the clock of the media window, the end of a song.
    void secondTick();

    Machine machine;
    DataDirectory directory;
    AppState state;
    Settings settings;
    Pause pause;

    Scanner NiteScan1, NiteScan2, NiteScan3;
    Reply reply;
    Dispatch dispatch;
    TriggerCommands triggerCommands;
    SilentMode silentMode;

    Listers listers;
    MediaFilter mediaFilter;
    Scan scan;
    Adding adding;

    Splash splash;
    MediaWindow mediaWindow;
    Sliders sliders;
    PlayCounters counters;
    Transport transport;
    PlayModes modes;
    RandomPick randomPick;
    PlaySelection selection;
    ModeTick modeTick;

private:
    enum class Phase { off, loading, running, saving };

    void loadWindows();
    void unloadWindows();
    void welcomeFirstRun();
    void greet(const std::string& loadNumber);
    void loadLists(const std::string& playlist);
    void fillPlaylistMenu();
    void loadCompanions();
    void unload();
    void savePlaylist();

    Phase phase_ = Phase::off;
    std::vector<CommandRow> rows1_, rows2_, rows3_; // what each scanner's lines are tried on
};

} // namespace larkspin
