#include "platform/posix/poll_loop.h"

#include <algorithm>
#include <ctime>
#include <poll.h>
#include <unistd.h>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

constexpr Nanoseconds forever = Nanoseconds::max();

// A long job serves a turn at each of its steps. It would spend its time in poll(2) if every
// one of these asked for input.
constexpr Nanoseconds pollInterval = 1ms;

timespec timespecOf(Nanoseconds span) {
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(span);
    return {static_cast<time_t>(seconds.count()), static_cast<long>((span - seconds).count())};
}

} // namespace

PollLoop::~PollLoop() {
    for (const int descriptor : signals_)
        ::close(descriptor);
}

void PollLoop::watch(int descriptor, Task readable) {
    watched_[descriptor] = std::make_shared<const Task>(std::move(readable));
}

void PollLoop::unwatch(int descriptor) {
    watched_.erase(descriptor);
}

void PollLoop::watchWritable(int descriptor, Task writable) {
    watchedWritable_[descriptor] = std::make_shared<const Task>(std::move(writable));
}

void PollLoop::unwatchWritable(int descriptor) {
    watchedWritable_.erase(descriptor);
}

void PollLoop::onSignals(std::initializer_list<int> signals, Task task) {
    const int descriptor = openSignals(signals);
    if (descriptor < 0)
        return;
    signals_.push_back(descriptor);
    watch(descriptor, [descriptor, task = std::move(task)] {
        if (takeSignal(descriptor))
            task();
    });
}

void PollLoop::serveTurn() {
    if (now() - polledAt_ >= pollInterval)
        pollDescriptors(0ns);
    queue_.runDue(now());
}

void PollLoop::waitUntil(Nanoseconds moment) {
    do
        turn(moment);
    while (now() < moment);
}

void PollLoop::waitFor(const std::function<bool()>& condition, Nanoseconds latest) {
    while (!condition() && now() < latest)
        turn(latest);
}

// Runs what is due, or sleeps until something is, but not past the latest moment.
void PollLoop::turn(Nanoseconds latest) {
    if (queue_.runDue(now())) {
        // Timers that are due all the time must not keep input from being read.
        pollDescriptors(0ns);
        return;
    }
    queue_.runBeforeSleep();
    const Nanoseconds wake = std::min(queue_.nextDue().value_or(forever), latest);
    const Nanoseconds moment = now();
    pollDescriptors(wake == forever ? forever : std::max(wake, moment) - moment);
}

// When handlers are nested too deep, descriptors wait like all events. Signals don't: most of them
// end the process, and a flood of lines must not keep it alive.
void PollLoop::pollDescriptors(Nanoseconds timeout) {
    std::vector<pollfd> polled;
    for (const auto& entry : watchedWritable_)
        polled.push_back({entry.first, POLLOUT, 0});
    for (const auto& entry : watched_)
        if (queue_.canNest() || std::ranges::count(signals_, entry.first) > 0)
            polled.push_back({entry.first, POLLIN, 0});
    const timespec limit = timespecOf(timeout);
    const int ready =
        ::ppoll(polled.data(), polled.size(), timeout == forever ? nullptr : &limit, nullptr);
    polledAt_ = now();
    if (ready <= 0)
        return;
    // Those after the last one come first, so that each has its turn.
    std::sort(polled.begin(), polled.end(),
              [](const pollfd& a, const pollfd& b) { return a.fd < b.fd; });
    const auto next =
        std::ranges::find_if(polled, [this](const pollfd& each) { return each.fd > lastServed_; });
    std::rotate(polled.begin(), next, polled.end());
    for (const pollfd& descriptor : polled)
        if (descriptor.revents != 0 && !serve(descriptor))
            return;
}

// False when the handler has served events, which may have read what else was found to be ready.
bool PollLoop::serve(const pollfd& ready) {
    const bool toWrite = ready.events == POLLOUT;
    const Watches& watches = toWrite ? watchedWritable_ : watched_;
    const auto found = watches.find(ready.fd);
    if (found == watches.end())
        return true; // an earlier handler of this round has unwatched it
    lastServed_ = ready.fd;
    const auto task = found->second;
    const std::uint64_t served = queue_.served();
    if (toWrite)
        (*task)();
    else
        queue_.runNested(*task);
    return queue_.served() == served + (toWrite ? 0 : 1);
}

} // namespace larkspin
