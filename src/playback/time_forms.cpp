#include "playback/time_forms.h"

#include "playback/media_control.h"
#include "text/number.h"

#include <cmath>

namespace larkspin {

namespace {

struct Clock {
    std::string minutes, seconds;
};

// Minutes are cut off and milliseconds rounded, so that the last half millisecond of a minute
// already reads as its first.
Clock split(double time) {
    const double milliseconds = time * 1000;
    const std::int64_t seconds = rounded(milliseconds) % 60000 / 1000;
    return {numberText(std::trunc(milliseconds / 60000)),
            (seconds < 10 ? "0" : "") + std::to_string(seconds)};
}

std::string rich(double time) {
    const Clock clock = split(time);
    return "<b>" + clock.minutes + "</b>:<b>" + clock.seconds;
}

bool hasPosition(MediaControl& player) {
    const PlayState now = player.PlayState();
    return now != PlayState::stopped && now != PlayState::closed && player.CurrentPosition() >= 0;
}

} // namespace

std::string plaintime(double seconds) {
    const Clock clock = split(seconds);
    return clock.minutes + ":" + clock.seconds;
}

std::string richlength(MediaControl& player) {
    if (player.PlayState() == PlayState::stopped)
        return "<b>0</b>:<b>00";
    return rich(player.Duration());
}

std::string plainlength(MediaControl& player) {
    const double duration = player.Duration();
    if (player.PlayState() == PlayState::stopped || duration < 0)
        return "0:00";
    return plaintime(duration);
}

std::string richposition(MediaControl& player) {
    if (!hasPosition(player))
        return "<b>0</b>:<b>00</b> / <b>0</b>:<b>00";
    return rich(player.CurrentPosition()) + " / " + richlength(player);
}

std::string plainposition(MediaControl& player) {
    if (!hasPosition(player))
        return "0:00 / 0:00";
    return plaintime(player.CurrentPosition()) + " / " + plainlength(player);
}

} // namespace larkspin
