// What stands on the media window.
#pragma once

#include "shell/window.h"

#include <vector>

namespace larkspin {

struct Core;
struct Playback;

std::vector<Control> mediaControls(const Core& core, Playback& playback);

} // namespace larkspin
