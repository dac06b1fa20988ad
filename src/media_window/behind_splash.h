// A long list job that is started from the media window: the splash window tells of it in the
// other's place.
#pragma once

#include "chat/core.h"
#include "shell/event_loop.h"

#include <string>

namespace larkspin {

class MediaFrame;
class Splash;

struct SplashJob {
    std::string status = "adding directory..."; // of every job that puts in or takes out
    double before = 0.2, after = 0;             // seconds for which it shows besides the work
};

class BehindSplash {
public:
    BehindSplash(const Core& core, Splash& splash, MediaFrame& frame)
        : state_(core.state), loop_(core.loop), splash_(splash), frame_(frame) {}

    // Does the work, and shows the media window after it whether it was there or not. Events run
    // meanwhile: when the run of the program ends in there, what is left isn't done, and the answer
    // is false.
    bool run(const SplashJob& job, const Task& work);
    bool run(const Task& work) { return run({}, work); }

private:
    AppState& state_;
    EventLoop& loop_;
    Splash& splash_;
    MediaFrame& frame_;
};

} // namespace larkspin
