#include "shell/event_queue.h"

#include <algorithm>
#include <cassert>

namespace larkspin {

namespace {

// Counts a handler as running for as long as this lives, also when an exception leaves it.
class Nested {
public:
    Nested(EventAtWork& atWork, std::uint64_t number) : atWork_(atWork), outer_(atWork) {
        atWork_ = {outer_.depth + 1, number};
    }
    ~Nested() {
        assert(atWork_.depth == outer_.depth + 1); // those within it have ended
        atWork_ = outer_;
    }
    Nested(const Nested&) = delete;
    Nested& operator=(const Nested&) = delete;

private:
    EventAtWork& atWork_;
    const EventAtWork outer_;
};

} // namespace

void EventQueue::post(Task task) {
    posted_.push_back(std::move(task));
}

TimerId EventQueue::every(Nanoseconds interval, Nanoseconds now, Task task) {
    const TimerId id{++lastTimer_};
    arm(now + interval, Timer{id, interval, std::move(task)});
    return id;
}

TimerId EventQueue::once(Nanoseconds span, Nanoseconds now, Task task) {
    const TimerId id{++lastTimer_};
    arm(now + span, Timer{id, Nanoseconds::zero(), std::move(task)});
    return id;
}

TimerId EventQueue::goOn(std::uint64_t event, Nanoseconds span, Nanoseconds now, Task task) {
    const TimerId id{++lastTimer_};
    arm(now + span, Timer{id, Nanoseconds::zero(), std::move(task), event});
    return id;
}

void EventQueue::cancel(TimerId timer) {
    std::erase_if(timers_, [timer](const auto& entry) { return entry.second.id == timer; });
}

// A task or timer may wait, and another turn then runs inside this one. So both lists are looked at
// anew after each call.
bool EventQueue::runDue(Nanoseconds now) {
    if (!canNest())
        return false;
    bool ran = false;
    // Tasks that these tasks post wait for the next turn.
    for (auto waiting = posted_.size(); waiting > 0 && !posted_.empty(); --waiting) {
        const Task task = std::move(posted_.front());
        posted_.pop_front();
        runNested(task);
        ran = true;
    }
    const auto armedBefore = armings_;
    for (auto due = timers_.begin(); due != timers_.end() && due->first.first <= now;) {
        const bool isNew = due->first.second >= armedBefore; // its next round is for a later turn
        if (isNew || !mayRun(due->second)) {
            ++due;
            continue;
        }
        runTimer(due, now);
        ran = true;
        due = timers_.begin(); // the handler may have changed any timer
    }
    return ran;
}

std::optional<Nanoseconds> EventQueue::nextDue() const {
    if (!canNest())
        return std::nullopt;
    if (!posted_.empty())
        return Nanoseconds::min(); // at once
    const auto next =
        std::ranges::find_if(timers_, [this](const auto& entry) { return mayRun(entry.second); });
    return next == timers_.end() ? std::nullopt : std::optional(next->first.first);
}

// The loop goes by index, since a task may add another one.
void EventQueue::runBeforeSleep() {
    for (std::size_t at = 0; at < beforeSleep_.size(); ++at)
        Task{beforeSleep_[at]}();
}

void EventQueue::runNested(const Task& task) {
    const Nested nested(atWork_, ++lastEvent_);
    task();
}

void EventQueue::arm(Nanoseconds moment, Timer timer) {
    timers_.emplace(DueKey{moment, armings_++}, std::move(timer));
}

// The next round is armed before the handler runs, so that a handler which waits can be
// overtaken by its own timer and can cancel it.
void EventQueue::runTimer(std::map<DueKey, Timer>::iterator due, Nanoseconds now) {
    const Task task = due->second.task;
    Timer again = std::move(due->second);
    const Nanoseconds scheduled = due->first.first;
    timers_.erase(due);
    if (again.interval == Nanoseconds::zero()) {
        runNested(task);
        return;
    }
    // A timer that comes late by several rounds runs once, and keeps its rhythm.
    const auto missed = std::max<std::int64_t>((now - scheduled) / again.interval, 0);
    const Nanoseconds next = scheduled + (missed + 1) * again.interval;
    arm(next, std::move(again));
    runNested(task);
}

} // namespace larkspin
