// The wait on which every timed sequence rests.
#pragma once

#include "shell/event_loop.h"

namespace larkspin {

class Pause {
public:
    explicit Pause(EventLoop& loop) : loop_(loop) {}

    // Waits that many seconds, served by elapsed time. Lines, clicks and ticks that arrive
    // meanwhile are handled to their end inside the wait, so that the caller must expect any
    // state to have changed. 0 and less return at once.
    void operator()(double seconds) const {
        if (seconds > 0)
            loop_.waitUntil(loop_.now() + std::chrono::round<Nanoseconds>(
                                              std::chrono::duration<double>(seconds)));
    }

private:
    EventLoop& loop_;
};

} // namespace larkspin
