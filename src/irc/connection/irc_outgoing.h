// What is on its way to the server: lines leave no faster than servers allow, and none is lost. By
// the rule that servers go by: a line costs two seconds, a long one more, and ten seconds' worth
// may be ahead of the clock.
#pragma once

#include "shell/event_loop.h"

#include <deque>
#include <functional>
#include <optional>
#include <string>

namespace larkspin {

class IrcOutgoing {
public:
    // The kinds go in this order: `protocol` keeps the connection alive, `typed` is what the owner
    // types, `said` is what the program says for him. But a line of the program's waits for no more
    // than two lines that he types.
    enum class Kind { protocol, typed, said };

    // Gets each line, with its line end, when it may go. It must not wait.
    using Send = std::function<void(const std::string& line)>;

    IrcOutgoing(EventLoop& loop, Send send);
    ~IrcOutgoing();
    IrcOutgoing(const IrcOutgoing&) = delete;
    IrcOutgoing& operator=(const IrcOutgoing&) = delete;

    // Ended as `ircLine` makes it; several in one text go together, in one place of the queue. An
    // empty one isn't sent. The task runs as the line goes, which may be at once, and must not
    // wait. Without one more place, the line is dropped and this is false: at most `mostWaiting` of
    // each kind wait.
    bool add(Kind kind, std::string line, Task gone = {});
    static constexpr std::size_t mostWaiting = 1000;

    // How many of that kind wait.
    std::size_t waiting(Kind kind) const { return lines_[place(kind)].size(); }

    // Said lines go no faster than so many in any minute; 0 for no limit beyond the server's.
    void limitSaid(int linesPerMinute);

    // How many messages wait that the owner has typed, as the server counts them.
    std::size_t unsaid() const;

    // Forget what waits: all of a kind, or all for a channel. The second one returns how many of
    // the owner's messages were among it.
    void drop(Kind kind);
    std::size_t dropFor(const std::string& channel);

    // Sends the last one of that kind at once, before all that wait: a farewell, before an end that
    // those won't outlive.
    void sendLast(Kind kind);

    // Forgets what waits, as after the end of a connection: nothing old is said on a new one, whose
    // server counts anew.
    void clear();

private:
    struct Line {
        std::string text;
        Task gone;
    };

    static std::size_t place(Kind kind) { return static_cast<std::size_t>(kind); }
    std::optional<Kind> first() const;
    Nanoseconds withinLimit() const;
    Nanoseconds due(Kind kind) const;
    void sendFirst(Kind kind);
    void sendDue();

    EventLoop& loop_;
    Send send_;
    std::deque<Line> lines_[3];
    std::size_t saidPerMinute_ = 0;
    std::deque<Nanoseconds> saidAt_; // the last minute's
    Nanoseconds paidUntil_{};        // the server's clock for this connection
    int typedInRow_ = 0;
    bool isSending_ = false;
    TimerId next_ = TimerId::none;
};

} // namespace larkspin
