// The repeating of a section of a song, marked by a command or by the rec button of the media
// window.
//
// The section belongs to no song: it stays in force when the song changes. Its loop is as exact as
// the one-second tick.
#pragma once

#include "chat/core.h"

#include <string>
#include <string_view>

namespace larkspin {

class MediaControl;

class SectionRepeat {
public:
    SectionRepeat(const Core& core, MediaControl& player)
        : state_(core.state), reply_(core.reply), player_(player) {}

    // "1:00, 1:30", or seconds without a colon. Times that are no numbers, or in the wrong order,
    // are refused. Without two times nothing happens.
    void rec(const std::string& times);
    void end();

    // The rec button: first the start of the section, then its end, and then no repeat.
    void press();

    // Each second: counts while a section is being marked, and sends the song back from its end.
    void check();

private:
    AppState& state_;
    Reply& reply_;
    MediaControl& player_;
};

} // namespace larkspin
