// How long the server takes to answer. It is asked by a PING, one at a time, whose answer comes
// when it has read all that was sent before.
#pragma once

#include "shell/event_loop.h"

#include <algorithm>
#include <deque>
#include <optional>
#include <string>
#include <string_view>

namespace larkspin {

class IrcLag {
public:
    // The line that asks. No other one may be owed an answer.
    std::string ask(Nanoseconds now);

    // The text of a PONG. How long the answer took, if it is the one that was waited for. Any other
    // one ends the wait as well: some servers change the text.
    std::optional<Nanoseconds> answered(std::string_view text, Nanoseconds now);

    // A line was sent that comes back, and one has come back that was sent at that moment. Those
    // before it, and those before the question that was answered, won't come any more.
    void expect(Nanoseconds now) { expected_.push_back(now); }
    void cameBack(Nanoseconds sentAt);

    bool isOwed() const { return isOwed_; }
    Nanoseconds owedFor(Nanoseconds now) const {
        return isOwed_ ? now - *askedAt_ : Nanoseconds(0);
    }
    std::optional<Nanoseconds> askedAt() const { return askedAt_; } // last

    // The same for whatever is expected.
    Nanoseconds longestOwed(Nanoseconds now) const;

    // What the last answer took, or the one that is owed has taken so far, if that is more.
    Nanoseconds current(Nanoseconds now) const { return std::max(last_, owedFor(now)); }
    Nanoseconds last() const { return last_; }

    // Whether so long an answer isn't the network's alone, going by the quickest one.
    bool isLate(Nanoseconds taken) const;
    bool isMeasured() const { return quickest_.has_value(); }

private:
    std::string token() const;

    int number_ = 0;
    bool isOwed_ = false;
    std::optional<Nanoseconds> askedAt_, quickest_;
    Nanoseconds last_{};
    std::deque<Nanoseconds> expected_; // when each was sent
};

} // namespace larkspin
