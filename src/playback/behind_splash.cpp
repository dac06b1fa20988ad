#include "playback/behind_splash.h"

#include "playback/media_window.h"
#include "shell/app_state.h"
#include "shell/pause.h"
#include "shell/splash.h"

namespace larkspin {

bool BehindSplash::run(const SplashJob& job, const Task& work) {
    const auto lasts = [this, ours = state_.run] { return state_.run == ours; };
    const Pause pause(loop_);
    window_.stepAside();
    splash_.show(job.status);
    pause(job.before);
    if (lasts())
        work();
    if (lasts())
        pause(job.behind);
    if (!lasts())
        return false;
    splash_.hide();
    window_.comeBack();
    return true;
}

} // namespace larkspin
