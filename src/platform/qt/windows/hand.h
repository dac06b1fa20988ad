// The way from the owner's hand to the program: each thing it does becomes an event of its own,
// since any handler may wait, and Qt's callbacks can't.
#pragma once

#include "shell/control_events.h"
#include "shell/event_loop.h"

#include <functional>
#include <utility>

namespace larkspin {

// What others are told about the owner's hand.
struct HandTells {
    Task titleMenu = [] {}; // for the tray icon's menu, since there may be no tray
    Task pressed = [] {};   // at once
};

class Hand {
public:
    Hand(EventLoop& loop, Window& window, HandTells tells)
        : loop_(loop), window_(window), tells_(std::move(tells)) {}

    Window& window() const { return window_; }

    void does(std::function<void(Window&)> what) const {
        tells_.pressed();
        passes(std::move(what));
    }
    // Without a press: he moves the mouse, types a text, or goes through rows.
    void passes(std::function<void(Window&)> what) const {
        loop_.post([&window = window_, what = std::move(what)] { what(window); });
    }
    void opensTitleMenu() const { loop_.post(tells_.titleMenu); }

private:
    EventLoop& loop_;
    Window& window_;
    HandTells tells_;
};

} // namespace larkspin
