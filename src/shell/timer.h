// A timer that is part of the state: off until enabled, then its handler runs once per
// interval. Disabling and enabling again starts the interval anew; enabling it while it runs
// changes nothing.
#pragma once

#include "shell/event_loop.h"

#include <utility>

namespace larkspin {

class Timer {
public:
    explicit Timer(Nanoseconds interval) : interval_(interval) {}
    ~Timer() { disable(); }

    Timer(Timer&& other) noexcept { *this = std::move(other); }
    Timer& operator=(Timer&& other) noexcept {
        if (this != &other) {
            disable();
            interval_ = other.interval_;
            loop_ = other.loop_;
            handler_ = std::move(other.handler_);
            running_ = std::exchange(other.running_, TimerId::none);
        }
        return *this;
    }

    // Says on which loop it runs and what it does. Until then it can't be enabled.
    void connect(EventLoop& loop, Task handler) {
        disable();
        loop_ = &loop;
        handler_ = std::move(handler);
    }

    void enable() {
        if (loop_ && !enabled())
            running_ = loop_->every(interval_, handler_);
    }

    void disable() {
        if (loop_)
            loop_->cancel(std::exchange(running_, TimerId::none));
    }

    bool enabled() const { return running_ != TimerId::none; }

private:
    Nanoseconds interval_{};
    EventLoop* loop_ = nullptr;
    Task handler_;
    TimerId running_ = TimerId::none;
};

} // namespace larkspin
