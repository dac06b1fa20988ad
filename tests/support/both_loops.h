// The event loops of the front ends, by turns: INSTANTIATE_TEST_SUITE_P(OnPollAndOnQt, …,
// testing::Bool()).
#pragma once

#include "platform/posix/poll_loop.h"
#include "platform/qt/qt_loop.h"
#include "support/qt_application.h"

#include <memory>
#include <sys/resource.h>

namespace larkspin {

inline std::unique_ptr<WatchingLoop> makeLoop(bool onQt) {
    if (!onQt)
        return std::make_unique<PollLoop>();
    startQt();
    return std::make_unique<QtLoop>();
}

// How often the thread wakes up while nothing happens.
inline long wakeUps(WatchingLoop& loop, Nanoseconds within) {
    loop.waitUntil(loop.now() + within / 10); // what was under way is over then
    rusage before{}, after{};
    ::getrusage(RUSAGE_THREAD, &before);
    loop.waitUntil(loop.now() + within);
    ::getrusage(RUSAGE_THREAD, &after);
    return after.ru_nvcsw - before.ru_nvcsw;
}

} // namespace larkspin
