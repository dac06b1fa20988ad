// The splash window `dire`: shows how far the start has come, and later a message while a
// long list job runs. Its status line is AppState's searchTerm.
#pragma once

#include "shell/pause.h"
#include "shell/window.h"

#include <string>

namespace larkspin {

struct AppState;
class EventLoop;

class Splash {
public:
    // `fades`: the desktop can draw a window half transparent.
    Splash(AppState& state, EventLoop& loop, bool fades);

    // The first use of a run: the window fades in, telling in its status line how far it has come,
    // and the call returns when it is opaque. Events run meanwhile.
    void open();

    // Any later use: the window is there at once, with this status line.
    void show(const std::string& status);

    void hide() { dire.visible = false; }
    void showStatusLine(bool shown) { dire.control("statusLine").visible = shown; }

    Window dire;

private:
    void fadeIn();

    AppState& state_;
    EventLoop& loop_;
    Pause pause_;
    bool fades_;
};

} // namespace larkspin
