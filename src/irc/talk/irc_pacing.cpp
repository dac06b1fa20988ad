#include "irc/talk/irc_pacing.h"

#include <utility>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

constexpr auto betweenLooks = 50ms; // at what is on its way

} // namespace

void IrcPacing::limitSaid(int linesPerMinute) {
    perLine_ = linesPerMinute > 0 ? Nanoseconds(1min) / linesPerMinute : Nanoseconds(0);
}

void IrcPacing::spoke() {
    if (!std::exchange(haveSpoken_.atWork().yes, true))
        return;
    const Nanoseconds end = loop_.now() + longest + perLine_;
    while (outgoing_.waiting(IrcOutgoing::Kind::said) > mostAhead && loop_.now() < end)
        loop_.waitUntil(loop_.now() + betweenLooks);
}

} // namespace larkspin
