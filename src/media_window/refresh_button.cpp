#include "media_window/refresh_button.h"

#include "chat/reply.h"
#include "library/refresh.h"
#include "media_window/behind_splash.h"
#include "media_window/media_frame.h"
#include "shell/app_state.h"
#include "shell/dialogs.h"
#include "shell/event_loop.h"
#include "shell/this_run.h"

#include <cstdlib>
#include <utility>

namespace larkspin {

namespace {

// The texts around the number are tags for the room, or empty for a window.
std::string changeText(int grown, const char* beforeNumber, const char* afterNumber) {
    if (grown == 0)
        return "no change";
    return (grown > 0 ? "added " : "removed ") + (beforeNumber + std::to_string(std::abs(grown))) +
           afterNumber + (grown > 0 ? " new songs" : " songs");
}

} // namespace

std::optional<Refreshed> RefreshButton::Command5_Click() {
    std::optional<Refreshed> refreshed;
    const auto work = [&] { refreshed = refreshWithStatus(); };
    // If the media window is hidden, there is no place for the splash window to take.
    if (!frame_.mp3s.visible)
        work();
    else if (!behindSplash_.run({.status = "refreshing list...", .before = 0.1, .after = 1}, work))
        return std::nullopt;
    return refreshed;
}

std::optional<Refreshed> RefreshButton::refreshWithStatus() {
    auto refreshed = refresh_.refreshDirectories();
    if (refreshed)
        state_.searchTerm = changeText(refreshed->grown, "", "");
    return refreshed;
}

void RefreshButton::press() {
    if (refresh_.isAtWork())
        return;
    if (const auto refreshed = Command5_Click())
        for (const std::string& note : refreshed->notes("", ""))
            dialogs_.box(note);
}

void RefreshButton::ref() {
    if (refresh_.isAtWork())
        return;
    const ThisRun run(state_);
    const auto refreshed = Command5_Click();
    if (!refreshed)
        return;
    reply_.saychat("list refreshed - " + changeText(refreshed->grown, "<b>", "</b>"));
    if (run.lasts())
        refresh_.say(*refreshed);
}

void RefreshButton::refreshAtStart() {
    ofStart_ = Command5_Click();
}

// Told in an event of its own, since a box would hold up the start.
void RefreshButton::tellOfStart() {
    if (const auto refreshed = std::exchange(ofStart_, std::nullopt))
        loop_.post([this, found = *refreshed, run = ThisRun(state_)] {
            if (run.lasts())
                refresh_.say(found);
        });
}

} // namespace larkspin
