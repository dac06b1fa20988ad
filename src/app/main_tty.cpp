// larkspin in a terminal.
#include "app/program.h"
#include "library/completion.h"
#include "platform/dbus/logind_power.h"
#include "platform/dbus/mpris_player.h"
#include "platform/dbus/mpris_service.h"
#include "platform/irc/irc_link.h"
#include "platform/player/player_control.h"
#include "platform/posix/asked_directories.h"
#include "platform/posix/asked_files.h"
#include "platform/posix/disk_questions.h"
#include "platform/posix/poll_loop.h"
#include "platform/posix/posix_launching.h"
#include "platform/posix/posix_machine_facts.h"
#include "platform/posix/posix_process.h"
#include "platform/posix/standard_streams.h"
#include "platform/posix/user_directories.h"
#include "platform/terminal/terminal.h"
#include "platform/terminal/terminal_display.h"
#include "shell/kept_files.h"

#include <csignal>
#include <unistd.h>

using namespace larkspin;

int main() {
    // The order matters: each part is given those above it, and the disk's workers are forked
    // before anything starts a thread.
    openStandardStreams();
    const PosixFiles onDisk(Wastebasket{userDataHome()});
    OwnersDisk disk(answersFrom(onDisk, PosixDirectories())); // before there are threads
    PollLoop loop;
    ChatLines lines(loop);
    disk.serve(loop);
    const DataDirectory directory(userDataDirectory());
    AskedFiles asked(disk, onDisk, userDataDirectory());
    KeptFiles files(asked, directory);
    AskedDirectories directories(disk, PosixDirectories(), userDataDirectory());
    IrcLink link(loop);
    Terminal terminal(loop, lines, link, files, directory, loginName(),
                      [&](std::string_view typed) { return directories.drivePath(typed); });
    PlayerControl player(loop, {playerBeside(), {}, disk},
                         [&](const std::string& line) { terminal.screen.note(line); });
    PosixLaunching launching;
    MprisPlayer otherPlayer(sessionBusAddress());
    PosixMachineFacts facts(disk, [] { return terminalDisplay(STDOUT_FILENO); });
    LogindPower power(systemBusAddress());
    PosixProcess process(userDataDirectory());
    process.beforeEnd([&] { terminal.close(); });

    Program program({.loop = loop,
                     .files = files,
                     .directories = directories,
                     .dialogs = terminal.dialogs,
                     .desktop = terminal.desktop,
                     .host = terminal.rooms.room,
                     .lines = lines,
                     .player = player,
                     .launching = launching,
                     .otherPlayer = otherPlayer,
                     .facts = facts,
                     .power = power,
                     .process = process,
                     .dataDirectory = userDataDirectory(),
                     .fadesWindows = false,
                     .note = [&](const std::string& line) { terminal.screen.note(line); }});
    MprisService remote(loop, sessionBusAddress(), program.playback.remote,
                        {.raise = {}, .quit = [&] { program.exit(); }});
    loop.onSignals({SIGTERM, SIGHUP, SIGINT}, [&] { program.end(); });
    program.opensBy([&] {
        terminal.completeBy(
            [&](std::string_view typed) { return completionOf(program.shell.state, typed); });
        terminal.open(program.windows(), [&] { program.end(); });
    });
    program.start();
    // Events run until one of them ends the process.
    loop.waitFor([] { return false; }, Nanoseconds::max());
}
