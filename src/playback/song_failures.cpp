#include "playback/song_failures.h"

#include "chat/reply.h"
#include "library/playlist_row.h"
#include "playback/media_control.h"
#include "playback/transport.h"
#include "shell/app_state.h"
#include "shell/dialogs.h"
#include "shell/event_loop.h"
#include "shell/this_run.h"

#include <utility>

namespace larkspin {

namespace {

constexpr std::size_t mostLines = 10; // of a box

} // namespace

void SongFailures::tell() {
    const auto reason = player_.failure();
    if (!reason || std::exchange(told_, transport_.turn()) == transport_.turn())
        return;
    state_.playMark = idleMark; // so that it isn't counted
    transport_.endPauseMark();
    const std::string text = songOfPath(player_.FileName()).name + " can't be played" +
                             (reason->empty() ? "" : ":  " + *reason);
    if (state_.silnt)
        addToBox(text);
    else
        reply_.tellOwner(text);
}

void SongFailures::leaveOut() {
    told_ = transport_.turn();
}

// A box waits for the owner, who may be away while a mode goes through a list. What comes up
// meanwhile goes into one box after it.
void SongFailures::addToBox(std::string text) {
    if (toShow_.size() < mostLines)
        toShow_.push_back(std::move(text));
    else
        ++more_;
    if (!std::exchange(isShowing_, true))
        loop_.post([this, run = ThisRun(state_)] { showBoxes(run); });
}

void SongFailures::showBoxes(const ThisRun& run) {
    while (run.lasts() && !toShow_.empty()) {
        std::string text;
        for (const std::string& line : std::exchange(toShow_, {}))
            text += (text.empty() ? "" : "\n") + line;
        if (const int more = std::exchange(more_, 0))
            text += "\nand " + std::to_string(more) + " more";
        dialogs_.box(text);
    }
    toShow_.clear();
    more_ = 0;
    isShowing_ = false;
}

} // namespace larkspin
