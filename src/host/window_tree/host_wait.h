// The wait for something in the client: it looks again and again while events run, no longer than
// `longestHostWait`. Between two looks the thread sleeps.
#pragma once

#include "host/window_tree/window_calls.h"
#include "shell/event_loop.h"

#include <chrono>
#include <functional>
#include <optional>

namespace larkspin {

// How long an operation waits for a window or a button. After it the operation gives up: the handle
// is 0, and what would have followed is left undone.
inline constexpr std::chrono::seconds longestHostWait{10};

// What was found; 0 when it can't come any more; nothing when it may come yet.
using HostLook = std::function<std::optional<HostHandle>()>;

// Gives what the look found, and 0 when time is up. Events run between two looks, so that any state
// may have changed after it.
HostHandle waitForHost(EventLoop& loop, const HostLook& look);

} // namespace larkspin
