// What is on its way to the server: lines leave no faster than the server reads them (IrcPace), and
// none is lost. In between the server is asked whether it still answers promptly (IrcLag).
#pragma once

#include "irc/connection/irc_lag.h"
#include "irc/connection/irc_pace.h"
#include "shell/event_loop.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace larkspin {

class IrcOutgoing {
public:
    // The kinds go in this order: `protocol` keeps the connection alive, `typed` is what the owner
    // types, `said` is what the program answers for him, and `recited` the rest of what it says,
    // which leaves room for what he types next. But a line of the program's waits for no more than
    // two lines that he types.
    enum class Kind { protocol, typed, said, recited };

    // Gets each line, with its line end, when it may go. It must not wait.
    using Send = std::function<void(const std::string& line)>;

    // `asked` is called after each time that the server was asked for an answer.
    IrcOutgoing(
        EventLoop& loop, Send send, Task asked = [] {});
    ~IrcOutgoing();
    IrcOutgoing(const IrcOutgoing&) = delete;
    IrcOutgoing& operator=(const IrcOutgoing&) = delete;

    // Runs as a line goes, which may be at once, and must not wait. What it gives goes in front of
    // the line: its tags, or nothing.
    using Leaving = std::function<std::string()>;

    // Ended as `ircLine` makes it; several in one text go together, in one place of the queue. An
    // empty one isn't sent. Without one more place, the line is dropped and this is false: at most
    // `mostWaiting` of each kind wait.
    bool add(Kind kind, std::string line, Leaving leaving = {});
    static constexpr std::size_t mostWaiting = 1000;

    // How many of that kind wait.
    std::size_t waiting(Kind kind) const { return lines_[place(kind)].size(); }

    // How many lines of the program's wait.
    std::size_t waitingToSay() const { return waiting(Kind::said) + waiting(Kind::recited); }

    // They go no faster than so many in any minute; 0 for no limit beyond the server's.
    void limitSaid(int linesPerMinute);

    // Forgets all lines of the program's that wait.
    void dropSaid();

    // Of all that waits, each line stays for which this is true, as it is then.
    void revise(const std::function<bool(std::string& line)>& stays);

    // Sends the last answer at once, before all that wait: a farewell, before an end that those
    // won't outlive.
    void sendLastSaid();

    // Forgets what waits, as after the end of a connection: nothing old is said on a new one, whose
    // server counts anew. What was learned from one that was lost holds until another server is
    // gone to.
    void clear(bool isLost = false);
    void changeServer() { pace_.serverChanged(); }

    // Whether what the owner types counts only when the server sends it back. Then he isn't kept
    // waiting to find out how fast the server is.
    void areSentBack(bool are) { areSentBack_ = are; }
    void cameBack(Nanoseconds sentAt); // what was sent at that moment

    // Asks the server for an answer, if it doesn't owe one; the answer is a PONG with this text.
    void ask();
    void answered(std::string_view text);
    const IrcLag& lag() const { return lag_; }

    // Lines have numbers as they go, from 1, which go on over all connections: the last one that
    // has gone, the last one that the server was asked about, and the last one of which it is known
    // that the server has read it.
    std::uint64_t lastSent() const { return lastSent_; }
    std::uint64_t lastAsked() const { return lastAsked_; }
    std::uint64_t lastRead() const { return lastRead_; }

    bool isToBlameForLag() const { return pace_.isToBlame(loop_.now()); }
    Nanoseconds ahead() const { return pace_.ahead(loop_.now()); } // of the server, by its price

private:
    struct Line {
        std::string text;
        Leaving leaving;
    };

    static std::size_t place(Kind kind) { return static_cast<std::size_t>(kind); }
    static bool isPrograms(Kind kind) { return kind == Kind::said || kind == Kind::recited; }
    Kind programsFirst() const { return waiting(Kind::said) > 0 ? Kind::said : Kind::recited; }
    bool isTurnOfSaid() const;
    bool isAnswer() const;
    bool isQuiet() const;
    std::optional<Kind> first() const;
    Nanoseconds withinLimit() const;
    std::optional<Nanoseconds> due(Kind kind) const;
    void plan();
    std::optional<Nanoseconds> askIfDue();
    void sendFirst(Kind kind);
    void give(const Line& line);
    void sendDue();

    EventLoop& loop_;
    Send send_;
    Task asked_;
    IrcLag lag_;
    IrcPace pace_{lag_};
    std::deque<Line> lines_[4];
    std::size_t saidPerMinute_ = 0;
    std::deque<Nanoseconds> saidAt_; // the last minute's
    std::optional<Nanoseconds> typedAt_;
    std::uint64_t lastSent_ = 0, lastAsked_ = 0, lastRead_ = 0;
    bool areSentBack_ = false, isTypedSinceAsked_ = false;
    int typedInRow_ = 0, saidInRow_ = 0;
    bool isSending_ = false;
    TimerId next_ = TimerId::none;
};

} // namespace larkspin
