// The desktop on which the bridge runs, and whether anybody can see it. As long as any program runs
// on one that nobody sees, Wine shows none that is started there.
#pragma once

#include "platform/bridge/windows/windows_api.h"

namespace larkspin::bridge {

class Desktop {
public:
    Desktop();
    bool isSeen() const { return isSeen_; }
    bool isGone() const; // with its display

private:
    bool isSeen_;
    HANDLE process_ = nullptr; // to which the desktop belongs; closed with this program
};

} // namespace larkspin::bridge
