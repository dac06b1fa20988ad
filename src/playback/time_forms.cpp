#include "playback/time_forms.h"

#include "playback/media_control.h"
#include "text/number.h"

namespace larkspin {

namespace {

std::string minutesAndSeconds(double time) {
    const std::int64_t milliseconds = rounded(time * 1000);
    const std::string seconds = std::to_string(milliseconds % 60000 / 1000);
    return std::to_string(milliseconds / 60000) + ":" + (seconds.size() < 2 ? "0" : "") + seconds;
}

} // namespace

std::string plainlength(MediaControl& player) {
    const double duration = player.Duration();
    if (player.PlayState() == PlayState::stopped || duration < 0)
        return "0:00";
    return minutesAndSeconds(duration);
}

std::string plainposition(MediaControl& player) {
    const PlayState now = player.PlayState();
    const double position = player.CurrentPosition();
    if (now == PlayState::stopped || now == PlayState::closed || position < 0)
        return "0:00 / 0:00";
    return minutesAndSeconds(position) + " / " + plainlength(player);
}

} // namespace larkspin
