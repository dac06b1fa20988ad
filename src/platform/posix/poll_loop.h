// The event loop on poll(2), for front ends without a toolkit. Between two events the thread
// sleeps in the kernel. Descriptors and end signals are served by every wait, also by one inside
// a handler.
#pragma once

#include "platform/posix/local_time.h"
#include "platform/posix/loop_parts.h"
#include "platform/posix/watching_loop.h"
#include "shell/event_queue.h"

#include <map>
#include <memory>
#include <poll.h>
#include <vector>

namespace larkspin {

class PollLoop : public WatchingLoop {
public:
    PollLoop() = default;
    ~PollLoop() override;
    PollLoop(const PollLoop&) = delete;
    PollLoop& operator=(const PollLoop&) = delete;

    Nanoseconds now() const override { return steadyTime(); }
    std::time_t moment() const override { return std::time(nullptr); }
    std::tm dateOf(std::time_t moment) const override { return larkspin::localTime(moment); }
    void post(Task task) override { queue_.post(std::move(task)); }
    TimerId every(Nanoseconds interval, Task task) override {
        return queue_.every(interval, now(), std::move(task));
    }
    TimerId once(Nanoseconds span, Task task) override {
        return queue_.once(span, now(), std::move(task));
    }
    TimerId goOn(std::uint64_t event, Nanoseconds span, Task task) override {
        return queue_.goOn(event, span, now(), std::move(task));
    }
    void cancel(TimerId timer) override { queue_.cancel(timer); }
    void beforeSleep(Task task) override { queue_.beforeSleep(std::move(task)); }
    void serveTurn() override;
    void waitUntil(Nanoseconds moment) override;
    EventAtWork atWork() const override { return queue_.atWork(); }

    void watch(int descriptor, Task readable) override;
    void unwatch(int descriptor) override;
    void watchWritable(int descriptor, Task writable) override;
    void unwatchWritable(int descriptor) override;
    void onSignals(std::initializer_list<int> signals, Task task) override;
    void waitFor(const std::function<bool()>& condition, Nanoseconds latest) override;

private:
    // Shared, since a handler may unwatch its own descriptor while it runs.
    using Watches = std::map<int, std::shared_ptr<const Task>>;

    void turn(Nanoseconds latest);
    void pollDescriptors(Nanoseconds timeout);
    bool serve(const pollfd& ready);

    EventQueue queue_;
    Watches watched_, watchedWritable_;
    std::vector<int> signals_; // descriptors
    Nanoseconds polledAt_{};
    int lastServed_ = -1; // descriptor
};

} // namespace larkspin
