#include "app/main_screen.h"

#include "app/main_linux.h"
#include "host/trace_word.h"
#include "platform/posix/own_files.h"
#include "platform/posix/user_directories.h"
#include "platform/terminal/room/screen_guide.h"
#include "platform/terminal/room/screen_room.h"
#include "platform/terminal/room/worded_desktop.h"
#include "platform/terminal/screen/screen.h"
#include "platform/terminal/terminal_display.h"
#include "platform/terminal/windows/screen_desktop.h"
#include "platform/terminal/windows/screen_dialogs.h"
#include "platform/terminal/windows/screen_windows.h"
#include "text/visible.h"

#include <iostream>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

namespace larkspin {

void runOnScreen(PollLoop& loop, Screen& screen, LinuxPorts& ports, const Started& started) {
    Stage stage(loop, screen.layers);
    ScreenDialogs dialogs(loop, stage, ports.directories);
    ScreenDesktop drawn(stage);
    ScreenRoom room(
        loop,
        {.layers = screen.layers,
         .setTitle = [&](const std::string& title) { screen.setTitle(title); },
         .takeMouse = [&](bool takes) { screen.takeMouse(takes); },
         .ring = [&] { screen.ring(); },
         .popUp = [&](const Menu& menu, const Cursor& at) { drawn.popUpAt(menu, at); },
         .openMenus = [&](std::vector<Menu> bar, int row) { drawn.openMenus(std::move(bar), row); },
         .pressed = [&] { stage.pressed(); }},
        ports.lines, [&] { return ports.connection(); }, ports.files, ports.directory, loginName());
    RoomView& view = room.layer.view;
    view.hasWindows = [&] { return stage.hasWindows(); };
    stage.whole = [&](const Area&) { return view.middle(); };
    stage.isLineBegun = [&] { return view.line.typing.isBegun(); };
    stage.colors = [&] { return TwoColors{view.front(), view.ground()}; };
    WordedDesktop desktop(drawn, room.desktop);
    room.rooms.networks.readPathsBy(
        [&](std::string_view typed) { return ports.directories.drivePath(typed); });
    room.rooms.preferences.lookIn(ports.folders());
    room.rooms.windows.reachBy(ports.windows);
    const auto tell = [&](const std::string& line) { room.tell(line); };
    // What is noted as a run ends is seen on the screen only if another run begins.
    std::vector<std::string> lastWords;
    const auto note = [&](const std::string& line) {
        tell(line);
        lastWords.push_back(line);
    };
    room.commands.add({traceWord(ports.trace, tell)});
    LinuxProgram larkspin(ports, {.dialogs = dialogs,
                                  .desktop = desktop,
                                  .host = room.rooms.room,
                                  .display = [] { return terminalDisplay(STDOUT_FILENO); },
                                  .fadesWindows = false,
                                  .tell = tell,
                                  .note = note,
                                  .close =
                                      [&] {
                                          for (const std::string& line : room.close())
                                              lastWords.push_back(line);
                                          screen.close();
                                          for (const std::string& line : lastWords)
                                              std::cerr << visibleText(line, " ") << std::endl;
                                      }});
    Program& program = larkspin.program;
    const ScreenGuide guide(room, program, ownManual());
    const ScreenWindows windows(loop, stage, program.windows());
    screen.whenGone([&] { program.end(); });
    room.completeBy([&](std::string_view typed) { return larkspin.completionOf(typed); });
    program.opensBy([&] {
        lastWords.clear();
        room.open(program.windows(), [&] { program.end(); });
    });
    larkspin.begin(started); // once the program runs
    program.start();
    // Events run until one of them ends the process.
    loop.waitFor([] { return false; }, Nanoseconds::max());
}

} // namespace larkspin
