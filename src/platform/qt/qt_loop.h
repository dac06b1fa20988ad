// The event loop on Qt's, for front ends with windows. Timers and posted tasks stay in the one
// queue, so that nesting and timing are those of the other loops; Qt sleeps, wakes up, and delivers
// input. It serves them in every loop of Qt's own as well, such as the outermost one.
//
// It is made after Qt's application and must outlive what waits.
#pragma once

#include "platform/posix/local_time.h"
#include "platform/posix/loop_parts.h"
#include "platform/posix/watching_loop.h"
#include "shell/event_queue.h"

#include <map>
#include <memory>
#include <vector>

class QSocketNotifier;
class QTimer;

namespace larkspin {

class QtLoop : public WatchingLoop {
public:
    QtLoop();
    ~QtLoop() override;
    QtLoop(const QtLoop&) = delete;
    QtLoop& operator=(const QtLoop&) = delete;

    Nanoseconds now() const override { return steadyTime(); }
    std::time_t moment() const override { return std::time(nullptr); }
    std::tm dateOf(std::time_t moment) const override { return larkspin::localTime(moment); }
    void post(Task task) override;
    TimerId every(Nanoseconds interval, Task task) override;
    TimerId once(Nanoseconds span, Task task) override;
    TimerId goOn(std::uint64_t event, Nanoseconds span, Task task) override;
    void cancel(TimerId timer) override { queue_.cancel(timer); }

    // What such a task does to a window reaches the screen a turn later: a task that has changed
    // something must post another one, which may be empty.
    void beforeSleep(Task task) override { queue_.beforeSleep(std::move(task)); }

    void serveTurn() override;
    void waitUntil(Nanoseconds moment) override;
    EventAtWork atWork() const override { return queue_.atWork(); }

    void watch(int descriptor, Task readable) override;
    void unwatch(int descriptor) override { forget(watched_, descriptor); }
    void watchWritable(int descriptor, Task writable) override;
    void unwatchWritable(int descriptor) override { forget(watchedWritable_, descriptor); }
    void onSignals(std::initializer_list<int> signals, Task task) override;
    void waitFor(const std::function<bool()>& condition, Nanoseconds latest) override;

private:
    struct Deadline {
        Nanoseconds moment;
        bool passed = false; // the wait has been woken up by it
    };
    using Watches = std::map<int, QSocketNotifier*>;

    void turn();
    void processEvents(bool mayWait);
    void wakeUp();
    void comeToRest();
    void show();
    void arm();
    void hearDescriptors();
    static void forget(Watches& watches, int descriptor);

    EventQueue queue_;
    std::unique_ptr<QTimer> alarm_; // for the earliest of what is due
    Nanoseconds alarmAt_{};
    std::vector<Deadline> deadlines_; // of the waits, the innermost one last
    Watches watched_, watchedWritable_, signals_;
    bool hearing_ = true; // descriptors to be read
    bool showing_ = false;
    Nanoseconds polledAt_{}, shownAt_{};
};

} // namespace larkspin
