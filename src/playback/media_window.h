// The media window `mp3s`, so far its place, its two heights and its title label.
#pragma once

#include "shell/window.h"

#include <string>

namespace larkspin {

struct AppState;
class EventLoop;
class MediaControl;
class Settings;

class MediaWindow {
public:
    MediaWindow(AppState& state, Settings& settings, MediaControl& player, EventLoop& loop);

    // Takes place and height from the settings, and gives them back at the end of a run.
    void load();
    void unload();

    // The mini height leaves only the title label, which then serves as a small clock.
    bool isMini() const;
    void showPosition();
    void showLength();

    Window mp3s;

private:
    void toggleHeight();

    AppState& state_;
    Settings& settings_;
    MediaControl& player_;
};

} // namespace larkspin
