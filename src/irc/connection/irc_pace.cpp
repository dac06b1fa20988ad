#include "irc/connection/irc_pace.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

struct Price {
    Nanoseconds perLine, perPart;
};
using Prices = const Price[4];
constexpr std::size_t part = 100; // bytes

// What is paid, which is a little more than servers are known to count, and what they count at
// least.
constexpr Prices prices = {
    {2s, 1s},         // irc2 on IRCnet
    {1100ms, 1100ms}, // UnrealIRCd
    {1100ms, 0s},     // InspIRCd and ircd-hybrid, which take one line in a second
    {600ms, 0s},      // ngircd and solanum, which take two or three
};
constexpr Prices leastPrices = {{1900ms, 1s}, {1s, 1s}, {1s, 0s}, {500ms, 0s}};

// A server that sends back what is said counts hardly more than a second for a line. To find out
// whether it counts more delays nothing; to find out whether it counts less may.
constexpr std::size_t firstThatDelays = 2;

// In lines at the price: how many may go at once.
constexpr int recitedAtOnce = 3, urgentAtOnce = 5;

// How far servers let a connection be ahead of their clock, with a margin, and what is ventured.
constexpr Nanoseconds credit = 10s, beyondCredit = 10500ms, mostVentured = 12500ms;
constexpr Nanoseconds creditOfAnswers = 8s;

// In bytes. The dearest servers end a connection with more than 1,000 unread, others with 2,560.
constexpr std::size_t mostUnreadInTrial = 800, mostUnread = 2000;

// So much is sent before the server is asked whether it still answers promptly.
constexpr int mostLinesUnasked = 8, mostLinesInTrial = 4;
constexpr std::size_t mostBytesUnasked = 1000;

constexpr int tooLateInRow = 2, enoughAlike = 10, notAlike = -1;
constexpr Nanoseconds longestHold = 1h, suspicious = 10s, untilReadAll = 15s;

Nanoseconds cost(const Price& price, IrcWeight weight) {
    return weight.lines * price.perLine + static_cast<int>(weight.bytes / part) * price.perPart;
}

// When a line may go that may put the connection so far ahead. A dearer one goes when nothing is.
Nanoseconds dueWithin(Nanoseconds ahead, Nanoseconds paidUntil, Nanoseconds cost) {
    return paidUntil + std::min(cost, ahead) - ahead;
}

} // namespace

bool IrcPace::isBeyond(Nanoseconds now) const {
    return isTrying_ &&
           (countedUntil_[level_] - now > beyondCredit || (isDecisive_ && lag_.isOwed()));
}

bool IrcPace::waitsForAnswer(Urgency urgency, IrcWeight weight, Nanoseconds now) const {
    if (!lag_.isOwed())
        return false; // what waits for it would have it asked
    const bool isRecited = urgency == Urgency::recited || urgency == Urgency::idle;
    const std::size_t unread = unreadBefore_ + unreadSince_ + weight.bytes;
    if (isBeyond(now))
        return isRecited || unread > mostUnreadInTrial;
    if (active() == 0)
        return false;
    return (isRecited && lag_.isLate(lag_.longestOwed(now))) || unread > mostUnread;
}

std::optional<Nanoseconds> IrcPace::due(Urgency urgency, IrcWeight weight, Nanoseconds now) const {
    if (waitsForAnswer(urgency, weight, now))
        return std::nullopt;
    const auto within = [&](std::size_t level, Nanoseconds ahead) {
        return dueWithin(ahead, paidUntil_[level], cost(prices[level], weight));
    };
    if (urgency == Urgency::idle)
        return paidUntil_[level_];
    if (urgency == Urgency::recited) {
        const Nanoseconds byPrice = within(active(), recitedAtOnce * prices[active()].perLine);
        return isTrying_ ? std::max(byPrice, dueWithin(mostVentured, countedUntil_[level_],
                                                       cost(leastPrices[level_], weight)))
                         : byPrice;
    }
    if (active() == 0)
        return within(level_, credit);
    const Nanoseconds byNext = within(next(), urgentAtOnce * prices[next()].perLine);
    if (urgency == Urgency::urgent)
        return byNext;
    return std::max(byNext, within(level_, isTrying_ ? mostVentured : creditOfAnswers));
}

// Time in which nothing was sent isn't saved up.
void IrcPace::sent(IrcWeight weight, Nanoseconds now) {
    const auto pay = [&](Nanoseconds& until, const Price& price) {
        until = std::max(until, now) + cost(price, weight);
    };
    for (std::size_t level = 0; level < priceCount; ++level) {
        pay(paidUntil_[level], prices[level]);
        pay(countedUntil_[level], leastPrices[level]);
    }
    const Price &dearer = prices[level_], &lower = prices[next()];
    if (cost(dearer, weight) != cost(lower, weight))
        alikeInTrial_ = notAlike;
    else if (alikeInTrial_ != notAlike)
        alikeInTrial_ += weight.lines;
    unreadSince_ += weight.bytes;
    linesSinceAsked_ += weight.lines;
    sentAt_ = now;
}

// Once begun, a trial goes on until it is decided, so that what it has used up isn't missed by
// what is urgent.
void IrcPace::plan(bool muchWaits, bool mayBeLate, Nanoseconds now) {
    const bool mayTry = level_ < firstThatDelays || mayBeLate;
    if (isTrying_) {
        isTrying_ = mayTry || (isDecisive_ && lag_.isOwed());
    } else if (mayTry && muchWaits && lag_.isMeasured() && next() != level_ && now >= heldUntil_) {
        isTrying_ = true;
        alikeInTrial_ = 0;
    }
}

bool IrcPace::isToBlame(Nanoseconds now) const {
    return isTrying_ || (heldAt_ && now - *heldAt_ < untilReadAll);
}

bool IrcPace::needsAnswer(Nanoseconds now) const {
    if (lag_.isOwed())
        return false;
    const int mostLines = lateInRow_ > 0            ? 1
                          : isTrying_ && level_ > 0 ? mostLinesInTrial
                                                    : mostLinesUnasked;
    return isBeyond(now) || (linesSinceAsked_ > 0 && lag_.isLate(lag_.longestOwed(now))) ||
           (active() > 0 && (linesSinceAsked_ >= mostLines || unreadSince_ >= mostBytesUnasked));
}

void IrcPace::asked(IrcWeight weight, Nanoseconds now) {
    isDecisive_ = isTrying_ && countedUntil_[level_] - now > beyondCredit;
    sent(weight, now);
    unreadBefore_ += std::exchange(unreadSince_, 0);
    linesSinceAsked_ = 0;
}

void IrcPace::answered(std::optional<Nanoseconds> taken, Nanoseconds now) {
    unreadBefore_ = 0;
    const bool isDecisive = std::exchange(isDecisive_, false) && isTrying_;
    if (!taken)
        return;
    if (lag_.isLate(*taken)) {
        lateInRow_ = isDecisive ? tooLateInRow : lateInRow_ + 1;
        return isLate(now);
    }
    lateInRow_ = 0;
    if (isDecisive || (isTrying_ && alikeInTrial_ >= enoughAlike))
        lower();
}

void IrcPace::lower() {
    level_ = next();
    isTrying_ = isDecisive_ = false;
}

// Once may be chance, and has what is recited wait for a moment.
void IrcPace::isLate(Nanoseconds now) {
    const Nanoseconds pause = recitedAtOnce * prices[active()].perLine;
    paidUntil_[active()] = std::max(paidUntil_[active()], now + pause);
    if (lateInRow_ < tooLateInRow)
        return;
    lateInRow_ = 0;
    if (!std::exchange(isTrying_, false)) {
        if (level_ == 0)
            return;
        --level_;
    }
    for (auto* const until : {&paidUntil_[level_], &countedUntil_[level_]})
        *until = std::min(*until, now + credit);
    heldAt_ = now;
    heldUntil_ = now + std::exchange(nextHold_, std::min(nextHold_ * 2, longestHold));
}

Nanoseconds IrcPace::ahead(Nanoseconds now) const {
    return std::max(paidUntil_[level_] - now, Nanoseconds(0));
}

void IrcPace::connectionEnded(bool isLost, Nanoseconds now) {
    if (isLost && active() > 0 && now - sentAt_ < suspicious)
        heldUntil_ = now + longestHold;
    level_ = 0;
    heldAt_.reset();
    isTrying_ = isDecisive_ = false;
    lateInRow_ = linesSinceAsked_ = 0;
    unreadBefore_ = unreadSince_ = 0;
    paidUntil_ = countedUntil_ = {};
}

void IrcPace::serverChanged() {
    heldUntil_ = {};
    nextHold_ = firstHold;
}

} // namespace larkspin
