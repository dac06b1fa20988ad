#include "irc/client/irc_clock.h"

#include "text/number.h"

#include <cstdio>

namespace larkspin {

// As the client words it: whoever reads it counts the characters from the full stop on.
void IrcClock::open(const std::tm& timeOfDay, std::chrono::minutes online) {
    char time[16];
    std::snprintf(time, sizeof time, "%d:%02d", timeOfDay.tm_hour, timeOfDay.tm_min);
    const auto hours = std::chrono::duration_cast<std::chrono::hours>(online);
    text_ = std::string("It is now ") + time + ". You have been online for ";
    if (hours.count() > 0)
        text_ += counted(hours.count(), "hour") + " and ";
    text_ += counted((online - hours).count(), "minute") + '.';
}

} // namespace larkspin
