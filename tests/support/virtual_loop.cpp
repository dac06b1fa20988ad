#include "support/virtual_loop.h"

#include <algorithm>

namespace larkspin {

// Every run begins on 19 December 2003 at 19:05.
std::tm VirtualLoop::localTime() const {
    std::tm moment{};
    moment.tm_year = 103;
    moment.tm_mon = 11;
    moment.tm_mday = 19;
    moment.tm_wday = 5;
    moment.tm_hour = 19;
    moment.tm_min = 5;
    return moment;
}

void VirtualLoop::waitUntil(Nanoseconds moment) {
    for (;;) {
        queue_.runDue(now_);
        if (now_ >= moment)
            return;
        queue_.runBeforeSleep();
        const auto due = queue_.nextDue();
        now_ = due ? std::clamp(*due, now_, moment) : moment;
    }
}

void VirtualLoop::waitWhile(const std::function<bool()>& condition) {
    while (condition()) {
        if (queue_.runDue(now_))
            continue;
        queue_.runBeforeSleep();
        now_ = std::max(now_, queue_.nextDue().value());
    }
}

} // namespace larkspin
