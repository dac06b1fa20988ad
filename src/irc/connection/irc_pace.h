// How fast lines may go to a server. Servers count what the lines of a connection cost, and let it
// be some way ahead of their clock; what comes then lies unread for a while, and when too much lies
// there the connection ends. None of them tells its prices, so they are learned.
//
// It begins with the price of the dearest servers. While much waits to be said, lines go at the
// next lower price, until by the higher one the server couldn't have read them all yet. If it
// answers promptly all the same, the lower price is its price; and it is taken for that while it is
// the same for all that is sent. A server that answers late is held to the higher one for some
// minutes.
#pragma once

#include "irc/connection/irc_lag.h"

#include <array>
#include <cstddef>
#include <optional>

namespace larkspin {

struct IrcWeight {
    std::size_t bytes;
    int lines = 1;
};

class IrcPace {
public:
    explicit IrcPace(const IrcLag& lag) : lag_(lag) {}

    // What is recited leaves something for what is urgent, so that two lines may go at any moment;
    // answers to that leave less, and what is idle leaves all.
    enum class Urgency { idle, recited, answer, urgent };

    // When a line may go; nothing while the server has to answer first.
    std::optional<Nanoseconds> due(Urgency urgency, IrcWeight weight, Nanoseconds now) const;
    void sent(IrcWeight weight, Nanoseconds now);

    // To be called before that is asked for: whether enough waits for a trial, and whether the
    // server may be brought to answer late to find out its price.
    void plan(bool muchWaits, bool mayBeLate, Nanoseconds now);

    // Whether the server may answer late for what was tried.
    bool isToBlame(Nanoseconds now) const;
    bool isBelowDearest() const { return active() > 0; } // the price

    // Whether the server is to be asked for an answer at once, and whether there is anything new
    // that it could answer for.
    bool needsAnswer(Nanoseconds now) const;
    bool hasNews() const { return linesSinceAsked_ > 0; }

    // The server is asked, by a line that was paid for like any other, and has answered.
    void asked(IrcWeight weight, Nanoseconds now);
    void answered(std::optional<Nanoseconds> taken, Nanoseconds now);

    // By the price that it has, the server reads for so long in what was sent.
    Nanoseconds ahead(Nanoseconds now) const;

    // The next connection begins anew. One that was lost at a price on trial may have been ended
    // for that.
    void connectionEnded(bool isLost, Nanoseconds now);
    void serverChanged(); // between connections

private:
    static constexpr std::size_t priceCount = 4;

    std::size_t next() const { return level_ + 1 < priceCount ? level_ + 1 : level_; }
    std::size_t active() const { return isTrying_ ? next() : level_; }
    bool isBeyond(Nanoseconds now) const;
    bool waitsForAnswer(Urgency urgency, IrcWeight weight, Nanoseconds now) const;
    void lower();
    void isLate(Nanoseconds now);

    const IrcLag& lag_;
    std::size_t level_ = 0; // of the price, from the dearest on
    bool isTrying_ = false; // the next one
    bool isDecisive_ = false;
    int alikeInTrial_ = 0; // lines of the same cost by both prices, if there are no others
    int lateInRow_ = 0;
    // The server's clock, by each price, and by what a server with such a price counts at least.
    std::array<Nanoseconds, priceCount> paidUntil_{}, countedUntil_{};
    std::size_t unreadBefore_ = 0, unreadSince_ = 0; // it was asked; bytes, at most
    int linesSinceAsked_ = 0;
    Nanoseconds sentAt_{}, heldUntil_{};
    std::optional<Nanoseconds> heldAt_; // since a trial
    static constexpr std::chrono::minutes firstHold{2};
    Nanoseconds nextHold_ = firstHold;
};

} // namespace larkspin
