// A long list job that is started from the media window. The splash window takes the media window's
// place and tells of the job.
#pragma once

#include "chat/core.h"
#include "shell/event_loop.h"

#include <string>

namespace larkspin {

class MediaFrame;
class Splash;

struct SplashJob {
    std::string status = "adding directory..."; // of every job that adds or removes rows
    double before = 0.2, after = 0;             // seconds that it shows, around the work
};

class BehindSplash {
public:
    BehindSplash(const Core& core, Splash& splash, MediaFrame& frame)
        : state_(core.state), loop_(core.loop), splash_(splash), frame_(frame) {}

    // Does the work, and then shows the media window, whether it was shown before or not. Events
    // are served meanwhile. When the run of the program ends in there, the rest isn't done, and the
    // answer is false.
    bool run(const SplashJob& job, const Task& work);
    bool run(const Task& work) { return run({}, work); }

private:
    AppState& state_;
    EventLoop& loop_;
    Splash& splash_;
    MediaFrame& frame_;
};

} // namespace larkspin
