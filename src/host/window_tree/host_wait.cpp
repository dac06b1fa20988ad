#include "host/window_tree/host_wait.h"

namespace larkspin {

static constexpr std::chrono::milliseconds betweenLooks{15};

HostHandle waitForHost(EventLoop& loop, const HostLook& look) {
    const Nanoseconds end = loop.now() + longestHostWait;
    for (;;) {
        if (const auto found = look())
            return *found;
        if (loop.now() >= end)
            return noHandle;
        loop.waitUntil(loop.now() + betweenLooks);
    }
}

} // namespace larkspin
