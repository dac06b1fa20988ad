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
    ChatLines::Talk& talk = lines_.talk();
    if (!std::exchange(talk.hasSpoken, true))
        return;
    const auto isAhead = [this, end = loop_.now() + longest + perLine_] {
        return outgoing_.waitingToSay() > mostAhead && loop_.now() < end;
    };
    if (talk.isRecited) {
        talk.isAhead = isAhead;
        return;
    }
    while (isAhead())
        loop_.waitUntil(loop_.now() + betweenLooks);
}

} // namespace larkspin
