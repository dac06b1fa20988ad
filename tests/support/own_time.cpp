// For LD_PRELOAD: gives the program that this is loaded into a time of its own (own_time.h).
#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <poll.h>
#include <sys/epoll.h>
#include <sys/select.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

namespace {

constexpr long billion = 1'000'000'000;

long givenBy(const char* variable, long otherwise) {
    const char* const text = std::getenv(variable);
    return text ? std::strtol(text, nullptr, 10) : otherwise;
}

long speed() {
    static const long speed = givenBy("OWN_TIME_SPEED", 1);
    return speed;
}

timespec timespecOf(long nanoseconds) {
    return {nanoseconds / billion, nanoseconds % billion};
}

long realTime(clockid_t clock) {
    timespec time{};
    ::syscall(SYS_clock_gettime, clock, &time);
    return time.tv_sec * billion + time.tv_nsec;
}

long ownTime(clockid_t clock) {
    static const long begin = realTime(CLOCK_MONOTONIC), ago = givenBy("OWN_TIME_AGO", 0) * billion;
    if (clock == CLOCK_PROCESS_CPUTIME_ID || clock == CLOCK_THREAD_CPUTIME_ID)
        return realTime(clock);
    const bool isDate = clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE;
    const long since = realTime(CLOCK_MONOTONIC) - begin;
    return realTime(clock) + since * (speed() - 1) - (isDate ? ago : 0);
}

int ownWait(int milliseconds) {
    return milliseconds > 0 ? static_cast<int>(std::max(milliseconds / speed(), 1L)) : milliseconds;
}

timespec ownWait(const timespec& span) {
    return timespecOf((span.tv_sec * billion + span.tv_nsec) / speed());
}

} // namespace

extern "C" {

int clock_gettime(clockid_t clock, timespec* time) noexcept {
    *time = timespecOf(ownTime(clock));
    return 0;
}
int gettimeofday(timeval* time, void*) noexcept {
    const long now = ownTime(CLOCK_REALTIME);
    *time = {now / billion, now % billion / 1000};
    return 0;
}
time_t time(time_t* time) noexcept {
    const time_t now = ownTime(CLOCK_REALTIME) / billion;
    return time ? *time = now : now;
}

int ppoll(pollfd* polled, nfds_t count, const timespec* span, const sigset_t* signals) {
    timespec own = ownWait(span ? *span : timespec{});
    return static_cast<int>(
        ::syscall(SYS_ppoll, polled, count, span ? &own : nullptr, signals, _NSIG / 8));
}
int poll(pollfd* polled, nfds_t count, int milliseconds) {
    const timespec span{milliseconds / 1000, milliseconds % 1000 * 1'000'000L};
    return ppoll(polled, count, milliseconds < 0 ? nullptr : &span, nullptr);
}
int epoll_wait(int epoll, epoll_event* events, int count, int milliseconds) {
    return static_cast<int>(::syscall(SYS_epoll_pwait, epoll, events, count, ownWait(milliseconds),
                                      nullptr, _NSIG / 8));
}
int select(int count, fd_set* readable, fd_set* writable, fd_set* other, timeval* span) {
    timespec own{};
    if (span)
        own = ownWait({span->tv_sec, span->tv_usec * 1000});
    return static_cast<int>(
        ::syscall(SYS_pselect6, count, readable, writable, other, span ? &own : nullptr, nullptr));
}
int nanosleep(const timespec* span, timespec* left) {
    const timespec own = ownWait(*span);
    return static_cast<int>(::syscall(SYS_nanosleep, &own, left));
}
}
