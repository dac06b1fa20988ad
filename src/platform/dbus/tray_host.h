// Whether a desktop on the session bus shows tray icons (StatusNotifier). It may come and go at any
// time; without a bus there is none.
#pragma once

#include "platform/dbus/bus.h"

#include <string>
#include <utility>

namespace larkspin {

class TrayHost {
public:
    // The loop must not run any more once this is gone.
    TrayHost(WatchingLoop& loop, const std::string& busAddress);

    bool isThere() const { return isThere_; }

    // Called when one has come.
    void onArrival(Task task) { arrived_ = std::move(task); }

private:
    void look();

    WatchingLoop& loop_;
    Bus bus_;
    bool isThere_ = false;
    Task arrived_ = [] {};
};

} // namespace larkspin
