#include "playback/refresh_button.h"

#include "chat/reply.h"
#include "library/refresh.h"
#include "playback/media_window.h"
#include "shell/app_state.h"
#include "shell/pause.h"
#include "shell/splash.h"

#include <cstdlib>

namespace larkspin {

namespace {

// The number can be dressed for the room.
std::string changeText(int grown, const char* beforeNumber, const char* behindNumber) {
    if (grown == 0)
        return "no change";
    return (grown > 0 ? "added " : "removed ") + (beforeNumber + std::to_string(std::abs(grown))) +
           behindNumber + (grown > 0 ? " new songs" : " songs");
}

} // namespace

int RefreshButton::Command5_Click() {
    Window& mp3s = window_.mp3s;
    if (!mp3s.visible)
        return refreshWithStatus();
    const Pause pause(loop_);
    mp3s.visible = false;
    splash_.show("refreshing list...");
    pause(0.1);
    const int grown = refreshWithStatus();
    pause(1);
    splash_.hide();
    mp3s.visible = true;
    return grown;
}

int RefreshButton::refreshWithStatus() {
    const int grown = refresh_.refreshDirectories();
    state_.searchTerm = changeText(grown, "", "");
    return grown;
}

void RefreshButton::ref() {
    reply_.saychat("list refreshed - " + changeText(Command5_Click(), "<b>", "</b>"));
}

} // namespace larkspin
