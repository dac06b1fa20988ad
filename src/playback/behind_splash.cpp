#include "playback/behind_splash.h"

#include "shell/pause.h"
#include "shell/splash.h"

namespace larkspin {

// The text has always been the same, whatever the job.
void behindSplash(EventLoop& loop, Splash& splash, Window& mp3s, const Task& work) {
    mp3s.visible = false;
    splash.show("adding directory...");
    Pause{loop}(0.2);
    work();
    splash.hide();
    mp3s.visible = true;
}

} // namespace larkspin
