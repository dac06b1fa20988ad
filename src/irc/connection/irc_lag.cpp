#include "irc/connection/irc_lag.h"

#include "irc/protocol/irc_message.h"

namespace larkspin {

namespace {

using namespace std::chrono_literals;

constexpr Nanoseconds leastLate = 500ms; // servers look at what they have held back once a second
constexpr Nanoseconds mostOfNetwork = 1s;

} // namespace

std::string IrcLag::token() const {
    return "larkspin-lag-" + std::to_string(number_);
}

std::string IrcLag::ask(Nanoseconds now) {
    ++number_;
    isOwed_ = true;
    askedAt_ = now;
    return ircLine("PING", {token()});
}

std::optional<Nanoseconds> IrcLag::answered(std::string_view text, Nanoseconds now) {
    const Nanoseconds taken = owedFor(now);
    if (!isOwed_)
        return std::nullopt;
    isOwed_ = false;
    cameBack(*askedAt_);
    if (text != token())
        return std::nullopt;
    last_ = taken;
    quickest_ = std::min(quickest_.value_or(taken), taken);
    return taken;
}

void IrcLag::cameBack(Nanoseconds sentAt) {
    while (!expected_.empty() && expected_.front() <= sentAt)
        expected_.pop_front();
}

Nanoseconds IrcLag::longestOwed(Nanoseconds now) const {
    const Nanoseconds back = expected_.empty() ? Nanoseconds(0) : now - expected_.front();
    return std::max(back, owedFor(now));
}

bool IrcLag::isLate(Nanoseconds taken) const {
    return taken > std::min(quickest_.value_or(mostOfNetwork), mostOfNetwork) + leastLate;
}

} // namespace larkspin
