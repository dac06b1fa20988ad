// larkspin on a desktop.
#include "app/program.h"
#include "library/completion.h"
#include "platform/dbus/logind_power.h"
#include "platform/dbus/mpris_player.h"
#include "platform/dbus/mpris_service.h"
#include "platform/dbus/running_copy.h"
#include "platform/dbus/tray_host.h"
#include "platform/irc/irc_link.h"
#include "platform/player/player_control.h"
#include "platform/posix/asked_directories.h"
#include "platform/posix/asked_files.h"
#include "platform/posix/disk_questions.h"
#include "platform/posix/posix_launching.h"
#include "platform/posix/posix_machine_facts.h"
#include "platform/posix/posix_process.h"
#include "platform/posix/standard_streams.h"
#include "platform/posix/user_directories.h"
#include "platform/qt/display.h"
#include "platform/qt/qt_desktop.h"
#include "platform/qt/qt_dialogs.h"
#include "platform/qt/qt_loop.h"
#include "platform/qt/room/qt_room.h"
#include "platform/qt/windows/qt_windows.h"
#include "shell/kept_files.h"

#include <csignal>
#include <iostream>
#include <string_view>

using namespace larkspin;

int main(int count, char** arguments) {
    // The order matters: each part is given those above it, and the disk's workers are forked
    // before anything starts a thread, as Qt does.
    const auto endSignals = {SIGTERM, SIGHUP, SIGINT};
    openStandardStreams();
    const PosixFiles onDisk(Wastebasket{userDataHome()});
    OwnersDisk disk(answersFrom(onDisk, PosixDirectories())); // before there are threads
    blockSignals(endSignals);
    Display display(count, arguments);
    if (count > 1 && arguments[1] == std::string_view("--probe"))
        return 0; // there is a display
    QtLoop loop;
    ChatLines lines(loop);
    disk.serve(loop);
    const DataDirectory directory(userDataDirectory());
    AskedFiles asked(disk, onDisk, userDataDirectory());
    KeptFiles files(asked, directory);
    AskedDirectories directories(disk, PosixDirectories(), userDataDirectory());
    QtDialogs dialogs(loop);
    QtDesktop desktop(loop);
    IrcLink link(loop);
    QtRoom room(loop, lines, link, files, directory, loginName());
    PlayerControl player(loop, {playerBeside(), {}, disk}, [&](const std::string& line) {
        loop.post([&room, line] { room.window.tell(line); });
    });
    PosixLaunching launching;
    MprisPlayer otherPlayer(sessionBusAddress());
    PosixMachineFacts facts(disk, [&] { return display.size(); });
    LogindPower power(systemBusAddress());
    PosixProcess process(userDataDirectory());
    process.beforeEnd([&] { room.close(); });

    Program program({.loop = loop,
                     .files = files,
                     .directories = directories,
                     .dialogs = dialogs,
                     .desktop = desktop,
                     .host = room.rooms.room,
                     .lines = lines,
                     .player = player,
                     .launching = launching,
                     .otherPlayer = otherPlayer,
                     .facts = facts,
                     .power = power,
                     .process = process,
                     .dataDirectory = userDataDirectory(),
                     .fadesWindows = display.drawsTransparency(),
                     .note = [](const std::string& line) { std::cerr << line << std::endl; }});
    const MprisService remote(loop, sessionBusAddress(), program.playback.remote,
                              {.raise =
                                   [&] {
                                       program.mediaWindow.list.show();
                                       room.show();
                                   },
                               .quit = [&] { program.exit(); }});
    TrayHost trayHost(loop, sessionBusAddress());
    trayHost.onArrival([&] { desktop.trayCame(); });
    display.onTray([&] { desktop.trayCame(); });
    desktop.findTrayBy([&] { return display.hasTray() || trayHost.isThere(); });
    const QtWindows windows(loop, program.windows(),
                            {.titleMenu = [&] { desktop.popUpTrayMenu(); },
                             .pressed = [&] { dialogs.ownerPresses(); }});
    desktop.onPress([&] { dialogs.ownerPresses(); });
    desktop.withoutTray([&] {
        if (!program.mediaWindow.frame.mp3s.visible)
            program.mediaWindow.list.show();
    });
    loop.onSignals(endSignals, [&] { program.end(); });
    display.onSessionEnd(
        [&] {
            program.keep();
            room.keep();
        },
        [&] { program.end(); });
    // The save must not touch anything of Qt's, so the tray is told first.
    display.onLoss([&] {
        desktop.loseDisplay();
        program.end();
    });
    room.completeBy(
        [&](std::string_view typed) { return completionOf(program.shell.state, typed); });
    loop.post([&] {
        if (process.claimOnlyCopy())
            room.show();
        else // this copy says so as it starts, and ends
            raiseRunningCopy(sessionBusAddress());
        dialogs.ownerPresses(); // on the icon that starts the program
        program.opensBy([&] { room.open([&] { program.end(); }); });
        program.start();
    });
    display.run();
    program.end();
}
