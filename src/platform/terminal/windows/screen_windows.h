// All described windows on a terminal. They are compared with the state once per turn, in front of
// the loop's sleep, however much has changed in it; one that isn't shown costs nothing.
#pragma once

#include "platform/terminal/windows/stage.h"
#include "shell/window.h"

#include <memory>
#include <vector>

namespace larkspin {

class ScreenWindows {
public:
    // The windows must live on, and so must the stage.
    ScreenWindows(EventLoop& loop, Stage& stage, const std::vector<Window*>& windows);

private:
    struct All;
    std::shared_ptr<All> all_;
};

} // namespace larkspin
