// larkspin on a desktop.
#include "app/main_linux.h"
#include "app/main_start.h"
#include "host/link_opening.h"
#include "host/trace_word.h"
#include "platform/dbus/notifications.h"
#include "platform/dbus/running_copy.h"
#include "platform/dbus/tray_host.h"
#include "platform/posix/own_files.h"
#include "platform/posix/user_directories.h"
#include "platform/qt/display.h"
#include "platform/qt/file_drops.h"
#include "platform/qt/qt_desktop.h"
#include "platform/qt/qt_dialogs.h"
#include "platform/qt/qt_loop.h"
#include "platform/qt/room/play_bar.h"
#include "platform/qt/room/qt_room.h"
#include "platform/qt/room/room_guide.h"
#include "platform/qt/windows/qt_windows.h"
#include "text/visible.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <string_view>

using namespace larkspin;

namespace {

// Where nobody sees the error output, as when another program opens a file by this one.
void showUnreachable(Display& display) {
    QtLoop loop;
    QtDialogs dialogs(loop);
    loop.onSignals(endSignals, [] { std::_Exit(EXIT_FAILURE); });
    loop.post([&] {
        dialogs.box(unreachableCopy);
        std::_Exit(EXIT_FAILURE);
    });
    display.run();
}

} // namespace

int main(int count, char** arguments) {
    const Started started = readStart(count, arguments, "larkspin", Display::knownOptions());
    LinuxDisk disk;
    blockSignals(endSignals);
    const Handing handing = handOver(started, disk.process, userDataDirectory());
    if (handing == Handing::done)
        return EXIT_SUCCESS;
    Display display(started.display);
    if (std::ranges::count(started.display, Display::probe) > 0)
        return EXIT_SUCCESS; // there is a display
    if (handing == Handing::failed)
        showUnreachable(display);
    QtLoop loop;
    LinuxPorts ports(disk, loop);
    QtDialogs dialogs(loop);
    QtDesktop desktop(loop);
    QtRoom room(
        loop, ports.lines, [&] { return ports.connection(); }, ports.files, ports.directory,
        loginName());
    room.rooms.networks.readPathsBy(
        [&](std::string_view typed) { return ports.directories.drivePath(typed); });
    dialogs.belongTo(room.window);
    room.rooms.preferences.lookIn(ports.folders());
    room.rooms.windows.reachBy(ports.windows);
    room.words.add({traceWord(ports.trace, [&](const std::string& text) { room.tell(text); })});
    const auto tell = [&](const std::string& line) {
        loop.post([&room, line] { room.tell(line); });
    };
    LinuxProgram larkspin(
        ports,
        {.dialogs = dialogs,
         .desktop = desktop,
         .host = room.rooms.room,
         .display = [&] { return display.size(); },
         .fadesWindows = display.drawsTransparency(),
         .tell = tell,
         .note = [](const std::string& line) { std::cerr << visibleText(line, " ") << std::endl; },
         .raise = [&] { room.show(); },
         .close = [&] { room.close(); }});
    Program& program = larkspin.program;
    const FileDrops drops(room.window, [&](const std::vector<std::string>& paths) {
        loop.post([&program, paths] { program.bring(paths, BroughtFiles::Then::adding); });
    });
    TrayHost trayHost(loop, sessionBusAddress());
    trayHost.onArrival([&] { desktop.trayCame(); });
    display.onTray([&] { desktop.trayCame(); });
    desktop.findTrayBy([&] { return display.hasTray() || trayHost.isThere(); });
    const QtWindows windows(
        loop, program.windows(),
        {.titleMenu = [&] { desktop.popUpTrayMenu(); }, .pressed = [&] { dialogs.ownerPresses(); }},
        {room.window, [&] { return room.window.openParts(); }});
    desktop.addToTrayMenu(
        {{.name = "room", .caption = "room", .action = [&] { room.show(); }}, separator("r")});
    room.hideInTrayIf([&] { return desktop.isInTray(); });
    desktop.onPress([&] { dialogs.ownerPresses(); });
    room.window.addBelow(*new PlayBar(loop, program.playback.songInPlay,
                                      [&] { dialogs.ownerPresses(); })); // the window's
    RoomGuide guide(
        loop, room, program, [&] { dialogs.ownerPresses(); }, ownManual());
    desktop.withoutTray([&] {
        if (!program.mediaWindow.frame.mp3s.visible)
            program.mediaWindow.list.show();
    });
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
    Notifications notifications(loop, sessionBusAddress());
    room.window.onCall({.begin =
                            [&](const OwnerCall& call) {
                                if (room.rooms.preferences.notifies())
                                    notifications.show(call.title, call.text,
                                                       [&room, place = call.place] {
                                                           room.rooms.goTo(place);
                                                           room.show();
                                                       });
                            },
                        .end = [&] { notifications.withdraw(); }});
    LinkOpening links(
        dialogs, [&](const std::string& address) { program.host.chores.openAddress(address); });
    room.window.onLink([&](const std::string& address) {
        dialogs.ownerPresses();
        links.open(address);
    });
    room.completeBy([&](std::string_view typed) { return larkspin.completionOf(typed); });
    loop.post([&] {
        if (ports.process.claimOnlyCopy())
            room.show();
        else // this copy says so as it starts, and ends
            raiseRunningCopy(sessionBusAddress());
        dialogs.ownerPresses(); // on the icon that starts the program
        program.opensBy([&] { room.open([&] { program.end(); }); });
        larkspin.begin(started); // once the program runs
        program.start();
    });
    display.run();
    program.end();
}
