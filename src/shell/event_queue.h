// Posted tasks and timers in the order in which they come due. Every event loop
// keeps one, so that nesting and timing are the same under a real clock and a virtual one.
// It knows no clock of its own: the loop says what time it is.
#pragma once

#include "shell/event_loop.h"

#include <cstddef>
#include <deque>
#include <limits>
#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace larkspin {

class EventQueue {
public:
    void post(Task task);
    TimerId every(Nanoseconds interval, Nanoseconds now, Task task);
    TimerId once(Nanoseconds span, Nanoseconds now, Task task);
    TimerId goOn(std::uint64_t event, Nanoseconds span, Nanoseconds now, Task task);
    void cancel(TimerId timer);
    void beforeSleep(Task task) { beforeSleep_.push_back(std::move(task)); }

    // Runs the tasks posted before this call and each timer that is due, once. True if
    // anything ran. Nothing runs when handlers are nested too deep.
    bool runDue(Nanoseconds now);

    // The earliest moment at which runDue has something to do; nothing when there is neither
    // task nor timer, or when nothing may run now.
    std::optional<Nanoseconds> nextDue() const;

    // The loop calls it when nothing is due; nextDue is to be asked after it.
    void runBeforeSleep();

    // Handlers wait inside each other's waits. Past this limit events stay queued until one
    // of them returns, so that a flood of lines can't exhaust the stack.
    static constexpr int nestingLimit = 64;
    bool canNest() const { return atWork_.depth < nestingLimit; }

    EventAtWork atWork() const { return atWork_; }

    // Runs a handler that comes from elsewhere, such as a readable file, and counts it.
    void runNested(const Task& task);
    std::uint64_t served() const { return lastEvent_; } // events so far

private:
    static constexpr std::uint64_t anyEvent = std::numeric_limits<std::uint64_t>::max();

    struct Timer {
        TimerId id;
        Nanoseconds interval; // 0 for one that fires once
        Task task;
        std::uint64_t lastEvent = anyEvent; // in the middle of which it may run
    };
    // Ordered by the moment, then by the number of the arming, so that equal moments fire in
    // the order in which they were set.
    using DueKey = std::pair<Nanoseconds, std::uint64_t>;

    bool mayRun(const Timer& timer) const { return atWork_.number <= timer.lastEvent; }
    void arm(Nanoseconds moment, Timer timer);
    void runTimer(std::map<DueKey, Timer>::iterator due, Nanoseconds now);

    std::deque<Task> posted_;
    std::vector<Task> beforeSleep_;
    std::map<DueKey, Timer> timers_;
    std::uint64_t armings_ = 0;
    std::uint64_t lastTimer_ = 0;
    std::uint64_t lastEvent_ = 0;
    EventAtWork atWork_;
};

} // namespace larkspin
