// The event loops of the front ends, by turns: INSTANTIATE_TEST_SUITE_P(OnPollAndOnQt, …,
// testing::Bool()).
#pragma once

#include "platform/posix/poll_loop.h"
#include "platform/qt/qt_loop.h"
#include "support/qt_application.h"

#include <memory>

namespace larkspin {

inline std::unique_ptr<WatchingLoop> makeLoop(bool onQt) {
    if (!onQt)
        return std::make_unique<PollLoop>();
    startQt();
    return std::make_unique<QtLoop>();
}

} // namespace larkspin
