// For LD_PRELOAD: time passes twenty times as fast for the program that this is loaded into. What
// it would wait for seconds, as servers do with people who send much, can be tested so in no time.
#include <algorithm>
#include <csignal>
#include <ctime>
#include <poll.h>
#include <sys/epoll.h>
#include <sys/select.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

namespace {

constexpr long speed = 20;
constexpr long billion = 1'000'000'000;

timespec timespecOf(long nanoseconds) {
    return {nanoseconds / billion, nanoseconds % billion};
}

long realTime(clockid_t clock) {
    timespec time{};
    ::syscall(SYS_clock_gettime, clock, &time);
    return time.tv_sec * billion + time.tv_nsec;
}

long hurriedTime(clockid_t clock) {
    static const long begin = realTime(CLOCK_MONOTONIC);
    const bool isTimeSpent = clock == CLOCK_PROCESS_CPUTIME_ID || clock == CLOCK_THREAD_CPUTIME_ID;
    const long since = realTime(CLOCK_MONOTONIC) - begin;
    return realTime(clock) + (isTimeSpent ? 0 : since * (speed - 1));
}

int hurriedWait(int milliseconds) {
    return milliseconds > 0 ? static_cast<int>(std::max(milliseconds / speed, 1L)) : milliseconds;
}

timespec hurriedWait(const timespec& span) {
    return timespecOf((span.tv_sec * billion + span.tv_nsec) / speed);
}

} // namespace

extern "C" {

int clock_gettime(clockid_t clock, timespec* time) noexcept {
    *time = timespecOf(hurriedTime(clock));
    return 0;
}
int gettimeofday(timeval* time, void*) noexcept {
    const long now = hurriedTime(CLOCK_REALTIME);
    *time = {now / billion, now % billion / 1000};
    return 0;
}
time_t time(time_t* time) noexcept {
    const time_t now = hurriedTime(CLOCK_REALTIME) / billion;
    return time ? *time = now : now;
}

int ppoll(pollfd* polled, nfds_t count, const timespec* span, const sigset_t* signals) {
    timespec hurried = hurriedWait(span ? *span : timespec{});
    return static_cast<int>(
        ::syscall(SYS_ppoll, polled, count, span ? &hurried : nullptr, signals, _NSIG / 8));
}
int poll(pollfd* polled, nfds_t count, int milliseconds) {
    const timespec span{milliseconds / 1000, milliseconds % 1000 * 1'000'000L};
    return ppoll(polled, count, milliseconds < 0 ? nullptr : &span, nullptr);
}
int epoll_wait(int epoll, epoll_event* events, int count, int milliseconds) {
    return static_cast<int>(::syscall(SYS_epoll_pwait, epoll, events, count,
                                      hurriedWait(milliseconds), nullptr, _NSIG / 8));
}
int select(int count, fd_set* readable, fd_set* writable, fd_set* other, timeval* span) {
    timespec hurried{};
    if (span)
        hurried = hurriedWait({span->tv_sec, span->tv_usec * 1000});
    return static_cast<int>(::syscall(SYS_pselect6, count, readable, writable, other,
                                      span ? &hurried : nullptr, nullptr));
}
int nanosleep(const timespec* span, timespec* left) {
    const timespec hurried = hurriedWait(*span);
    return static_cast<int>(::syscall(SYS_nanosleep, &hurried, left));
}
}
