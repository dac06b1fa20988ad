// A time of its own for a child process, by a library that is loaded into it (own_time.cpp).
#pragma once

#include <string>
#include <vector>

namespace larkspin {

// The variables of a program whose time passes so many times as fast, and whose date is some
// seconds ago. What it would wait for minutes, as servers do with people who send much, it waits
// for seconds.
inline std::vector<std::string> ownTime(long speed, long secondsAgo = 0) {
    return {"LD_PRELOAD=" LARKSPIN_OWN_TIME, "OWN_TIME_SPEED=" + std::to_string(speed),
            "OWN_TIME_AGO=" + std::to_string(secondsAgo)};
}

} // namespace larkspin
