// The wait for something in the client: it looks again and again while events run, no longer than
// `longestHostWait`. Between two looks the thread sleeps.
#pragma once

#include "host/host_client.h"
#include "shell/event_loop.h"

#include <functional>
#include <optional>

namespace larkspin {

// What was found; 0 when it can't come any more; nothing when it may come yet.
using HostLook = std::function<std::optional<HostHandle>()>;

// Gives what the look found, and 0 when time is up. Events run between two looks, so that any state
// may have changed after it.
HostHandle waitForHost(EventLoop& loop, const HostLook& look);

} // namespace larkspin
