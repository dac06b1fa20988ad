// The machine that larkspin's front ends find on Linux, and the program on it. A front end brings
// its loop, its boxes, its desktop and its rooms; all that needs no screen is put together here.
//
// Three steps, in this order: the disk, before there is any thread; the ports, on the front end's
// loop; the program, when the front end stands.
#pragma once

#include "app/main_start.h"
#include "app/program.h"
#include "host/preferences.h"
#include "irc/connection/traced_connection.h"
#include "library/completion.h"
#include "outside/window_player.h"
#include "platform/bridge/bridge_session.h"
#include "platform/dbus/logind_power.h"
#include "platform/dbus/mpris_player.h"
#include "platform/dbus/mpris_service.h"
#include "platform/dbus/running_copy.h"
#include "platform/irc/irc_link.h"
#include "platform/player/player_control.h"
#include "platform/posix/asked_directories.h"
#include "platform/posix/asked_files.h"
#include "platform/posix/posix_launching.h"
#include "platform/posix/posix_machine_facts.h"
#include "platform/posix/posix_process.h"
#include "shell/kept_files.h"
#include "shell/trace.h"

#include <csignal>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

namespace larkspin {

// By which the machine tells the program to save and end.
inline constexpr std::initializer_list<int> endSignals = {SIGTERM, SIGHUP, SIGINT};

// Its workers are forked at once. The standard streams are opened even before that, since what is
// opened while one of them is closed would take its place.
struct LinuxDisk {
    LinuxDisk();

    const PosixFiles files;
    OwnersDisk owners;
    PosixProcess process; // after the workers, which mustn't hold on to its lock
};

struct LinuxPorts {
    LinuxPorts(LinuxDisk& ownersDisk, WatchingLoop& frontEndsLoop);

    LinuxDisk& disk;
    WatchingLoop& loop;
    ChatLines lines;
    const DataDirectory directory;
    Trace trace; // also of a crash
    AskedFiles asked;
    KeptFiles files; // over those
    AskedDirectories directories;
    std::unique_ptr<IrcConnection> connection(); // to a network, one more
    Preferences::Folders folders();
    PosixLaunching launching;
    BridgeSession windows; // of a client that Wine runs
    MprisPlayer playerOnBus;
    WindowPlayer otherPlayer{playerOnBus, windows.calls()};
    LogindPower power;
    PosixProcess& process;
};

struct FrontEnd {
    Dialogs& dialogs;
    Desktop& desktop;
    HostClient& host;
    PosixMachineFacts::Display display;
    bool fadesWindows;
    PlayerControl::Tell tell;                     // to the owner
    std::function<void(const std::string&)> note; // of the machine
    Task raise = {};                              // brings it in front; empty where it can't be
    Task close;                                   // just before the process ends
};

class LinuxProgram {
public:
    LinuxProgram(LinuxPorts& ports, const FrontEnd& frontEnd);

    // What a line that the owner has begun to type can become.
    Completion completionOf(std::string_view typed) const;

    // Does what it was started with, as soon as the program runs.
    void begin(const Started& started);

private:
    void open(const std::vector<std::string>& addresses); // plays or adds what lies there
    void press(const std::vector<std::string>& buttons);

    PlayerControl player_;
    PosixMachineFacts facts_;

public:
    Program program;

private:
    Directories& directories_;
    Task comeForward_;
    MprisService remote_;
    RunningCopy copy_;
};

} // namespace larkspin
