#include "platform/qt/room/room_guide.h"

#include "app/menu_bar.h"
#include "app/program.h"
#include "platform/qt/room/first_steps_view.h"
#include "platform/qt/room/menu_bar_view.h"
#include "platform/qt/room/qt_room.h"

namespace larkspin {

RoomGuide::RoomGuide(EventLoop& loop, QtRoom& room, Program& program, const Task& pressed,
                     const std::string& manual)
    : firstSteps(program, room.rooms.preferences) {
    const auto does = [&room](const std::string& line) { room.does(line); };
    const auto press = [&room, pressed, does](const std::string& line) {
        room.window.turnToLine(); // the button goes once there are songs
        pressed();
        does(line);
    };
    room.triggerBy([&program] { return program.shell.state.trigger; });
    program.help.showBy([&room](const std::string& word) { room.words.run("/help " + word); });
    room.words.add({firstSteps.word()});
    firstSteps.begin();
    room.window.addHint(*new FirstStepsView(loop, firstSteps, press, [&room](const auto& line) {
        room.offer(line);
    })); // these are the window's
    room.window.addAbove(*new MenuBarView(loop,
                                          menuBar({.program = program,
                                                   .rooms = room.rooms,
                                                   .firstSteps = firstSteps,
                                                   .run = does,
                                                   .manual = manual}),
                                          pressed));
}

} // namespace larkspin
