// The event loop port: one thread, timers and posted tasks, and waits that serve both.
// Behind it stands a poll(2) loop, a toolkit's loop, or a virtual clock in the tests.
//
// Handlers nest: a task that waits here is overtaken by the tasks that come due meanwhile.
// Nothing here throws.
#pragma once

#include <chrono>
#include <cstdint>
#include <ctime>
#include <functional>

namespace larkspin {

using Nanoseconds = std::chrono::nanoseconds;
using Task = std::function<void()>;

enum class TimerId : std::uint64_t { none = 0 };

// An event that is being served.
struct EventAtWork {
    int depth = 0;            // how many are being served inside each other
    std::uint64_t number = 0; // its own, and that of no other

    bool operator==(const EventAtWork&) const = default;
};

class EventLoop {
public:
    virtual ~EventLoop() = default;

    // Time since some fixed moment. It never goes back, whatever happens to the wall clock.
    virtual Nanoseconds now() const = 0;

    // What the owner's clock shows, in seconds since 1970, and his date and time of day then.
    virtual std::time_t moment() const = 0;
    virtual std::tm dateOf(std::time_t moment) const = 0;
    std::tm localTime() const { return dateOf(moment()); }

    // Runs the task in a later turn, after those posted before it.
    virtual void post(Task task) = 0;

    // Runs the task once per interval until it is cancelled; rounds that came late because
    // the thread was busy are not made up for.
    virtual TimerId every(Nanoseconds interval, Task task) = 0;

    // Runs the task once, when the span has passed.
    virtual TimerId once(Nanoseconds span, Task task) = 0;

    // The same for what goes on from an event, told by its number: not in the middle of one that
    // has begun after it, which is let end first.
    virtual TimerId goOn(std::uint64_t event, Nanoseconds span, Task task) = 0;

    // Cancelling a timer that is gone, or TimerId::none, does nothing.
    virtual void cancel(TimerId timer) = 0;

    // From now on runs the task whenever nothing is due and the thread is about to sleep: what has
    // changed since the last time can be shown at once. A loop may also run it now and then in the
    // turns that a long job serves. It must not wait; what it posts runs before the sleep.
    virtual void beforeSleep(Task task) = 0;

    // Runs what is due now and returns without waiting.
    virtual void serveTurn() = 0;

    // Serves events until the moment has come; in between the thread sleeps.
    virtual void waitUntil(Nanoseconds moment) = 0;

    // The innermost one that is being served; all 0 outside of any.
    virtual EventAtWork atWork() const = 0;
};

} // namespace larkspin
