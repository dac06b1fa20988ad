// What an event loop offers beyond the port where descriptors tell of news: each front end's own
// loop watches them in its own way.
#pragma once

#include "shell/event_loop.h"

#include <initializer_list>

namespace larkspin {

class WatchingLoop : public EventLoop {
public:
    // Calls back whenever the descriptor can be read, or its other end is gone, until it is
    // unwatched. One watch per descriptor.
    virtual void watch(int descriptor, Task readable) = 0;
    virtual void unwatch(int descriptor) = 0;

    // The same for a descriptor that takes bytes again, or whose reader is gone. It is served
    // however deep handlers are nested, so that the task must not wait.
    virtual void watchWritable(int descriptor, Task writable) = 0;
    virtual void unwatchWritable(int descriptor) = 0;

    // From now on these signals reach the task as events instead of their usual effect, however
    // deep handlers are nested. Threads that have started before must have them blocked
    // (`blockSignals`).
    virtual void onSignals(std::initializer_list<int> signals, Task task) = 0;

    // Serves events until the condition holds or the moment has come. The condition is looked
    // at after each turn.
    virtual void waitFor(const std::function<bool()>& condition, Nanoseconds latest) = 0;
};

} // namespace larkspin
