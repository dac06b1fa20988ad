#include "media_window/behind_splash.h"

#include "media_window/media_frame.h"
#include "shell/pause.h"
#include "shell/splash.h"
#include "shell/this_run.h"

namespace larkspin {

bool BehindSplash::run(const SplashJob& job, const Task& work) {
    const ThisRun run(state_);
    const Pause pause(loop_);
    frame_.stepAside();
    splash_.show(job.status);
    // Time for the splash window to be drawn, and to be read.
    pause(job.before);
    if (run.lasts())
        work();
    if (run.lasts())
        pause(job.after);
    if (!run.lasts())
        return false;
    splash_.hide();
    frame_.comeBack();
    return true;
}

} // namespace larkspin
