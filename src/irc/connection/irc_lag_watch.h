// Tells the owner when the server begins to take long to answer, and when that is over.
#pragma once

#include "shell/event_loop.h"

#include <chrono>

namespace larkspin {

class IrcOutgoing;

class IrcLagWatch {
public:
    // `changed` is called after each change of `isLagging`, and must not wait.
    IrcLagWatch(EventLoop& loop, IrcOutgoing& outgoing, Task changed);
    ~IrcLagWatch() { clear(); }
    IrcLagWatch(const IrcLagWatch&) = delete;
    IrcLagWatch& operator=(const IrcLagWatch&) = delete;

    static constexpr std::chrono::seconds longest{2};
    static constexpr std::chrono::seconds longestInTrial{10}; // of a price, which makes it so

    bool isLagging() const { return isLagging_; }

    // To be called when the server has been asked, and when it has answered.
    void asked();
    void answered();

    void clear(); // as a connection ends

private:
    void look();
    void wakeIn(Nanoseconds span);
    void change(bool isLagging);

    EventLoop& loop_;
    IrcOutgoing& outgoing_;
    Task changed_;
    bool isLagging_ = false;
    TimerId timer_ = TimerId::none;
};

} // namespace larkspin
