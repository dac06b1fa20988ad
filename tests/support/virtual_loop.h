// A loop on a virtual clock: waiting costs no time, it moves the clock and fires what comes
// due on the way, in order.
#pragma once

#include "shell/event_queue.h"

namespace larkspin {

class VirtualLoop : public EventLoop {
public:
    Nanoseconds now() const override { return now_; }
    std::tm localTime() const override;
    void post(Task task) override { queue_.post(std::move(task)); }
    TimerId every(Nanoseconds interval, Task task) override {
        return queue_.every(interval, now_, std::move(task));
    }
    TimerId once(Nanoseconds span, Task task) override {
        return queue_.once(span, now_, std::move(task));
    }
    TimerId goOn(std::uint64_t event, Nanoseconds span, Task task) override {
        return queue_.goOn(event, span, now_, std::move(task));
    }
    void cancel(TimerId timer) override { queue_.cancel(timer); }
    void beforeSleep(Task task) override { queue_.beforeSleep(std::move(task)); }
    void serveTurn() override { queue_.runDue(now_); }
    void waitUntil(Nanoseconds moment) override;
    void waitWhile(const std::function<bool()>& condition); // which events change

    EventAtWork atWork() const override { return queue_.atWork(); }
    bool hasNothingToDo() const { return !queue_.nextDue(); } // now or ever

private:
    EventQueue queue_;
    Nanoseconds now_ = std::chrono::seconds(1);
};

} // namespace larkspin
