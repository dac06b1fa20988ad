#include "playback/refresh_button.h"

#include "chat/reply.h"
#include "library/refresh.h"
#include "playback/behind_splash.h"
#include "playback/media_window.h"
#include "shell/app_state.h"

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

std::optional<int> RefreshButton::Command5_Click() {
    std::optional<int> grown;
    const auto work = [&] { grown = refreshWithStatus(); };
    if (!window_.mp3s.visible)
        work();
    else if (!behindSplash_.run({.status = "refreshing list...", .before = 0.1, .behind = 1}, work))
        return std::nullopt;
    return grown;
}

int RefreshButton::refreshWithStatus() {
    const int grown = refresh_.refreshDirectories();
    state_.searchTerm = changeText(grown, "", "");
    return grown;
}

void RefreshButton::ref() {
    if (const auto grown = Command5_Click())
        reply_.saychat("list refreshed - " + changeText(*grown, "<b>", "</b>"));
}

} // namespace larkspin
