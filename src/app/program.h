// The program: all its folders, put together on the ports of one machine.
//
// Everything that happens comes in from there: lines said in the room, ticks of the clocks, what
// the owner does with windows and menus, and the machine's wish that the process end.
#pragma once

#include "app/brought_files.h"
#include "app/help_command.h"
#include "app/machine.h"
#include "app/status_commands.h"
#include "chat/chat.h"
#include "companions/companions.h"
#include "host/host.h"
#include "library/library.h"
#include "media_window/media_window.h"
#include "outside/outside.h"
#include "playback/playback.h"
#include "shell/event_loop.h"
#include "shell/menu.h"
#include "shell/shell.h"

#include <string>
#include <utility>
#include <vector>

namespace larkspin {

class Program {
public:
    explicit Program(const Machine& machine);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    // Loads settings and lists, greets the room and starts listening. Returns when the program
    // runs. With another running copy the process ends instead.
    void start();

    // Save and end the process: the owner's way, and the machine's, which says nothing. Until the
    // greeting there is nothing to save. From then on the owner may have typed something: it is
    // taken first.
    void exit();
    void end();

    // What a front end does once, after the start, to bring in the lines that the owner has typed
    // during it. If the end comes before that, it is done then.
    void opensBy(Task open) { open_ = std::move(open); }

    // Saves as these do, and goes on: the process may or may not be about to end.
    void keep();

    // Saves, and starts again in the same process.
    void restart();

    // Takes files and directories from outside, as soon as the program runs. If the owner has to
    // close a box before that, he is told.
    void bring(const std::vector<std::string>& paths, BroughtFiles::Then then);

    // Does this as soon as the program runs, and after what is to be brought in by then.
    void whenRunning(const Task& task);

    // Whether it runs: all is loaded, and commands are taken.
    bool isRunning() const { return phase_ == Phase::running && chat.NiteScan1.running(); }
    bool isFirstRun() const { return isFirstRun_; }

    // Every window there is, shown or not. They live as long as the program.
    std::vector<Window*> windows();

    Machine machine;
    Shell shell;
    Chat chat;
    Library library;
    Playback playback;
    MediaWindow mediaWindow;
    Companions companions;
    Host host;
    Outside outside;
    BroughtFiles broughtFiles{chat.core, library.broughtSongs, playback.transport};
    HelpCommand help{chat.core};
    StatusCommands status{chat.core, machine.host, playback.transport, playback.counters};

private:
    enum class Phase { off, loading, greeted, running, saving };

    void claimOnlyCopy();
    void loadWindows();
    void welcomeFirstRun();
    void greet(const std::string& loadNumber);
    void countLoad(const std::string& loadNumber);
    void loadFolders(const StoredSettings& stored);
    void listen();
    void openFrontEnd();
    void doEarlyTasks();
    void tellEarlyFiles();
    void takeEarlyLines();
    void finish(bool speaks);
    void save();
    bool saveWhole(); // false when something couldn't be kept
    void unload(bool speaks);
    void secondTick();
    void tellSoon();
    void tellNews();

    Phase phase_ = Phase::off;
    bool isFirstRun_ = false;
    bool isEndWanted_ = false; // to come as soon as all is loaded
    bool isEnding_ = false;
    TimerId settling_ = TimerId::none; // up to then the owner's first lines may not have been taken
    TimerId telling_ = TimerId::none;
    Task open_;
    bool isWelcoming_ = false;                      // the box of the first run stands
    bool hasEarlyFiles_ = false;                    // among these
    std::vector<Task> earlyTasks_;                  // that came before the program could do them
    std::vector<CommandRow> rows1_, rows2_, rows3_; // what each scanner's lines are tried on
};

} // namespace larkspin
