#include "platform/irc/irc_pacing.h"

namespace larkspin {

namespace {

using namespace std::chrono_literals;

constexpr auto betweenLooks = 50ms; // at what is on its way
constexpr std::uint64_t nobody = static_cast<std::uint64_t>(-1);

} // namespace

void IrcPacing::limitSaid(int linesPerMinute) {
    perLine_ = linesPerMinute > 0 ? Nanoseconds(1min) / linesPerMinute : Nanoseconds(0);
}

bool IrcPacing::hasSpoken() const {
    const auto [depth, number] = loop_.atWork();
    const auto at = static_cast<std::size_t>(depth);
    return at < speakers_.size() && speakers_[at] == number;
}

void IrcPacing::spoke() {
    if (!hasSpoken()) {
        const auto [depth, number] = loop_.atWork();
        speakers_.resize(static_cast<std::size_t>(depth) + 1, nobody); // deeper ones have ended
        speakers_.back() = number;
        return;
    }
    if (waiting_ >= mostWaiting)
        return;
    ++waiting_;
    const Nanoseconds end = loop_.now() + longest + perLine_;
    while (outgoing_.waiting(IrcOutgoing::Kind::said) > mostAhead && loop_.now() < end)
        loop_.waitUntil(loop_.now() + betweenLooks);
    --waiting_;
}

} // namespace larkspin
