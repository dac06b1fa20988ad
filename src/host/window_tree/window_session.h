// The port to whatever reaches the windows of the client: it is begun when the owner wants it, and
// may end at any moment. While it isn't up, its calls find nothing.
#pragma once

#include "host/window_tree/window_calls.h"

#include <functional>
#include <string>

namespace larkspin {

class WindowSession {
public:
    virtual ~WindowSession() = default;

    // Begins, which may take seconds, and returns at once. Nothing happens to one that is begun.
    virtual void begin() = 0;
    virtual void end() = 0; // at once, and without a word

    enum class State { off, beginning, up };
    virtual State state() const = 0;

    // Hears, in an event of its own, that it is up, or that it couldn't begin or has ended: then it
    // is off, and why is told in words.
    using Changed = std::function<void(const std::string& why)>;
    virtual void onChange(Changed changed) = 0;

    virtual WindowCalls& calls() = 0;
};

} // namespace larkspin
