#include "platform/qt/room/room_guide.h"

#include "app/menu_bar.h"
#include "app/program.h"
#include "platform/qt/room/connect_dialog.h"
#include "platform/qt/room/first_steps_view.h"
#include "platform/qt/room/menu_bar_view.h"
#include "platform/qt/room/preferences_dialog.h"
#include "platform/qt/room/qt_room.h"
#include "platform/qt/task_bar.h"
#include "shell/dialogs.h"

namespace larkspin {

namespace {

// Above the windows that stay on top themselves.
void bringUp(QDialog& dialog) {
    if (!dialog.isVisible()) {
        dialog.setWindowFlag(Qt::WindowStaysOnTopHint);
        belongTo(dialog.parentWidget(), dialog);
    }
    dialog.show();
    dialog.raise();
    dialog.activateWindow();
}

} // namespace

RoomGuide::RoomGuide(EventLoop& loop, QtRoom& room, Program& program, const Task& pressed,
                     const std::string& manual)
    : firstSteps(program, room.rooms.preferences), loop_(loop), room_(room), program_(program) {
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
                                                   .connect = [this] { showConnect(); },
                                                   .preferences = [this] { showPreferences(); },
                                                   .manual = manual}),
                                          pressed));
}

void RoomGuide::showConnect() {
    if (!connect_)
        connect_ = new ConnectDialog(loop_, room_.rooms.networks, room_.rooms.own.ownName(),
                                     &room_.window);
    if (!connect_->isVisible())
        connect_->refresh();
    bringUp(*connect_);
}

void RoomGuide::showPreferences() {
    const auto askFolder = [this](const std::string& beginning) {
        return program_.machine.dialogs.openDirectory(
            {.title = "where is your music?", .directory = beginning});
    };
    if (!preferences_)
        preferences_ = new PreferencesDialog(loop_, room_.rooms.preferences, room_.rooms.log,
                                             askFolder, &room_.window);
    preferences_->refresh();
    bringUp(*preferences_);
}

} // namespace larkspin
