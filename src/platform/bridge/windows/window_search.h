// The ways through the tree of windows, for which no window needs to answer.
#pragma once

#include "platform/bridge/windows/deadline.h"

#include <functional>
#include <string>

namespace larkspin::bridge {

// As the manager knows it, cut at `WindowCalls::longestText`.
std::string captionOf(HWND window);

// The windows that the walk goes through, each once, until it is told to stop or time is up.
using Visit = std::function<bool(FoundWindow& found)>; // whether it goes on
void visit(const WindowWalk& walk, const Deadline& deadline, const Visit& each);

// The front-most top-level window with exactly this caption; of this class, if there is one.
HWND topLevelWindow(const char* className, const std::string& caption, const Deadline& deadline);

} // namespace larkspin::bridge
