#include "platform/terminal/room/screen_guide.h"

#include "app/menu_bar.h"
#include "app/program.h"
#include "platform/terminal/room/screen_room.h"

namespace larkspin {

ScreenGuide::ScreenGuide(ScreenRoom& room, Program& program, const std::string& manual)
    : firstSteps(program, room.rooms.preferences),
      links_(program.machine.dialogs,
             [&program](const std::string& address) { program.host.chores.openAddress(address); }) {
    room.setMenus(menuBar({.program = program,
                           .rooms = room.rooms,
                           .firstSteps = firstSteps,
                           .run = [&room](const std::string& line) { room.does(line); },
                           .connect = [&room] { room.helpToType("connect"); },
                           .manual = manual}));
    room.commands.triggerBy([&program] { return program.shell.state.trigger; });
    program.help.showBy([&room](const std::string& word) { room.commands.run("/help " + word); });
    room.commands.add({firstSteps.word()});
    firstSteps.begin();
    room.layer.view.show(
        firstSteps, [&room](const std::string& line) { room.does(line); },
        [&room](const std::string& line) { room.offer(line); });
    room.layer.show(program.playback.songInPlay);
    room.openLinksBy([this](const std::string& address) { links_.open(address); });
}

} // namespace larkspin
