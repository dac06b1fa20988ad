// What stands on the media window.
#pragma once

#include "shell/window.h"

#include <vector>

namespace larkspin {

struct Core;
struct MediaWindow;
struct Playback;

std::vector<Control> mediaControls(const Core& core, MediaWindow& window, Playback& playback);

} // namespace larkspin
