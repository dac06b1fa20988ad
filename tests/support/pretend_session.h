// What reaches a pretended client's windows: it comes up when it is asked for, and ends when a test
// says so.
#pragma once

#include "host/window_tree/window_session.h"
#include "shell/event_loop.h"

#include <string>
#include <utility>

namespace larkspin {

class PretendSession : public WindowSession {
public:
    PretendSession(WindowCalls& calls, EventLoop& loop) : calls_(calls), loop_(loop) {}

    void begin() override {
        if (state_ != State::off)
            return;
        state_ = State::beginning;
        ++begun;
        loop_.post([this] { become(failure.empty() ? State::up : State::off, failure); });
    }
    void end() override { state_ = State::off; }
    State state() const override { return state_; }
    void onChange(Changed changed) override { changed_ = std::move(changed); }
    WindowCalls& calls() override { return calls_; }

    void breakOff(const std::string& why) {
        loop_.post([this, why] { become(State::off, why); });
    }
    std::string failure; // for which it can't begin
    int begun = 0;

private:
    void become(State state, const std::string& why) {
        state_ = state;
        changed_(why);
    }

    WindowCalls& calls_;
    EventLoop& loop_;
    State state_ = State::off;
    Changed changed_;
};

} // namespace larkspin
