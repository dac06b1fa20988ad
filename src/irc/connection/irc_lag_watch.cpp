#include "irc/connection/irc_lag_watch.h"

#include "irc/connection/irc_outgoing.h"

#include <utility>

namespace larkspin {

namespace {

constexpr std::chrono::seconds untilAskedAgain{5}; // while it lags

} // namespace

IrcLagWatch::IrcLagWatch(EventLoop& loop, IrcOutgoing& outgoing, Task changed)
    : loop_(loop), outgoing_(outgoing), changed_(std::move(changed)) {}

void IrcLagWatch::clear() {
    loop_.cancel(std::exchange(timer_, TimerId::none));
    isLagging_ = false;
}

void IrcLagWatch::wakeIn(Nanoseconds span) {
    loop_.cancel(timer_);
    timer_ = loop_.once(span, [this] { look(); });
}

void IrcLagWatch::change(bool isLagging) {
    isLagging_ = isLagging;
    changed_();
}

void IrcLagWatch::asked() {
    wakeIn(longest);
}

void IrcLagWatch::answered() {
    loop_.cancel(std::exchange(timer_, TimerId::none));
    if (!isLagging_)
        return;
    if (outgoing_.lag().last() < longest)
        change(false);
    else
        wakeIn(untilAskedAgain);
}

void IrcLagWatch::look() {
    timer_ = TimerId::none;
    const IrcLag& lag = outgoing_.lag();
    if (isLagging_)
        return lag.isOwed() ? void() : outgoing_.ask();
    const Nanoseconds most = outgoing_.isToBlameForLag() ? longestInTrial : longest;
    if (const Nanoseconds left = most - lag.owedFor(loop_.now()); left > Nanoseconds(0))
        wakeIn(left);
    else
        change(true);
}

} // namespace larkspin
