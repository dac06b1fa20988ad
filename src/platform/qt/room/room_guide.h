// What leads the owner about in the room's window: its menus, the dialogs that they open, and the
// first steps while there are no songs.
#pragma once

#include "app/first_steps.h"
#include "shell/event_loop.h"

#include <QPointer>
#include <string>

namespace larkspin {

class ConnectDialog;
class PreferencesDialog;
class Program;
class QtRoom;

class RoomGuide {
public:
    // All must outlive it. `pressed` is called at once when the owner chooses something.
    RoomGuide(EventLoop& loop, QtRoom& room, Program& program, const Task& pressed,
              const std::string& manual);
    RoomGuide(const RoomGuide&) = delete;
    RoomGuide& operator=(const RoomGuide&) = delete;

    FirstSteps firstSteps;

private:
    void showConnect();
    void showPreferences();

    EventLoop& loop_;
    QtRoom& room_;
    Program& program_;
    QPointer<ConnectDialog> connect_; // the window's, once they have been asked for
    QPointer<PreferencesDialog> preferences_;
};

} // namespace larkspin
