// The moment at which a piece of work is to be done, however far it got.
#pragma once

#include "platform/bridge/windows/windows_api.h"

#include <algorithm>

namespace larkspin::bridge {

class Deadline {
public:
    explicit Deadline(unsigned milliseconds) : end_(GetTickCount64() + milliseconds) {}

    bool isOver() const { return left() == 0; }
    unsigned left() const { // milliseconds
        const ULONGLONG now = GetTickCount64();
        return now < end_ ? static_cast<unsigned>(end_ - now) : 0;
    }

private:
    ULONGLONG end_;
};

} // namespace larkspin::bridge
