// A loop on a virtual clock: waiting costs no time, it moves the clock and fires what comes
// due on the way, in order.
#pragma once

#include "shell/event_queue.h"

#include <algorithm>

namespace larkspin {

class VirtualLoop : public EventLoop {
public:
    Nanoseconds now() const override { return now_; }
    // Every run begins at 19:05 on a Friday, 19 December 2003.
    std::time_t moment() const override {
        return 1'071'860'700 + std::chrono::duration_cast<std::chrono::seconds>(now_).count() - 1;
    }
    std::tm dateOf(std::time_t moment) const override {
        std::tm date{};
        ::gmtime_r(&moment, &date);
        return date;
    }
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
    void waitUntil(Nanoseconds moment) override {
        for (queue_.runDue(now_); now_ < moment; queue_.runDue(now_)) {
            queue_.runBeforeSleep();
            const auto due = queue_.nextDue();
            now_ = due ? std::clamp(*due, now_, moment) : moment;
        }
    }
    void waitWhile(const std::function<bool()>& condition) { // which events change
        while (condition()) {
            if (queue_.runDue(now_))
                continue;
            queue_.runBeforeSleep();
            now_ = std::max(now_, queue_.nextDue().value());
        }
    }

    EventAtWork atWork() const override { return queue_.atWork(); }
    bool hasNothingToDo() const { return !queue_.nextDue(); } // now or ever

private:
    EventQueue queue_;
    Nanoseconds now_ = std::chrono::seconds(1);
};

} // namespace larkspin
