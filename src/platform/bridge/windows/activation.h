// Makes another program's window the active one. Both it and the one that was active before may
// hang, and the system would wait for them: so it is done in a thread of its own, and one that
// isn't done after a moment is left behind until it is.
#pragma once

#include "platform/bridge/windows/deadline.h"

#include <string>

namespace larkspin::bridge {

class Activation {
public:
    Activation() = default;
    Activation(const Activation&) = delete;
    Activation& operator=(const Activation&) = delete;
    ~Activation();

    // The front-most top-level window with exactly this caption. Nothing is done while an earlier
    // one isn't through.
    void activate(const std::string& caption, const Deadline& deadline);

private:
    bool isBusy() const;

    HANDLE thread_ = nullptr;
};

} // namespace larkspin::bridge
