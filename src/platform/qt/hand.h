// The way from the owner's hand to the program: each thing it does becomes an event of its own,
// since any handler may wait, and Qt's callbacks can't.
#pragma once

#include "shell/control_events.h"
#include "shell/event_loop.h"

#include <functional>
#include <utility>

namespace larkspin {

class Hand {
public:
    // `titleMenu` stands in for the tray icon's menu, where there may be no tray.
    Hand(EventLoop& loop, Window& window, Task titleMenu)
        : loop_(loop), window_(window), titleMenu_(std::move(titleMenu)) {}

    Window& window() const { return window_; }

    void does(std::function<void(Window&)> what) const {
        loop_.post([&window = window_, what = std::move(what)] { what(window); });
    }
    void opensTitleMenu() const {
        if (titleMenu_)
            loop_.post(titleMenu_);
    }

private:
    EventLoop& loop_;
    Window& window_;
    Task titleMenu_;
};

} // namespace larkspin
