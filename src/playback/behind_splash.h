// A long list job that is started from the media window: the splash window tells of it in the
// other's place.
#pragma once

#include "shell/event_loop.h"

namespace larkspin {

class Splash;
struct Window;

void behindSplash(EventLoop& loop, Splash& splash, Window& mp3s, const Task& work);

} // namespace larkspin
