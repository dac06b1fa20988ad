#include "irc/connection/irc_outgoing.h"

#include <algorithm>
#include <utility>

namespace larkspin {

using namespace std::chrono_literals;

namespace {

// Servers count what the lines of a connection cost. They stop reading while it is this far ahead
// of the clock, and end it when too much is unread. A line that goes only when it doesn't put the
// connection further ahead never lies unread.
constexpr Nanoseconds mostAhead = 10s;
constexpr Nanoseconds perLine = 2s, perPart = 1s;
constexpr std::size_t part = 120; // bytes
constexpr Nanoseconds minute = 60s;
constexpr int mostTypedInRow = 2; // while something is to be said

Nanoseconds cost(const std::string& line) {
    const auto lines = std::max<std::ptrdiff_t>(std::ranges::count(line, '\n'), 1);
    return std::min(mostAhead, lines * perLine + static_cast<int>(line.size() / part) * perPart);
}

} // namespace

IrcOutgoing::IrcOutgoing(EventLoop& loop, Send send) : loop_(loop), send_(std::move(send)) {}

IrcOutgoing::~IrcOutgoing() {
    loop_.cancel(next_);
}

bool IrcOutgoing::add(Kind kind, std::string line, Task gone) {
    std::deque<Line>& lines = lines_[place(kind)];
    if (line.empty())
        return true;
    if (lines.size() >= mostWaiting)
        return false;
    lines.push_back({std::move(line), std::move(gone)});
    sendDue();
    return true;
}

void IrcOutgoing::limitSaid(int linesPerMinute) {
    saidPerMinute_ = static_cast<std::size_t>(std::max(linesPerMinute, 0));
    sendDue();
}

void IrcOutgoing::drop(Kind kind) {
    lines_[place(kind)].clear();
    sendDue();
}

std::size_t IrcOutgoing::dropFor(const std::string& channel) {
    const auto isFor = [&](const Line& line) {
        // The second word of a line is the channel that it is for.
        const auto target = line.text.find(' ');
        return target != line.text.npos &&
               line.text.compare(target, channel.size() + 2, ' ' + channel + ' ') == 0;
    };
    const std::size_t before = unsaid();
    for (std::deque<Line>& lines : lines_)
        std::erase_if(lines, isFor);
    const std::size_t dropped = before - unsaid();
    sendDue();
    return dropped;
}

std::size_t IrcOutgoing::unsaid() const {
    return static_cast<std::size_t>(
        std::ranges::count_if(lines_[place(Kind::typed)],
                              [](const Line& line) { return line.text.starts_with("PRIVMSG "); }));
}

void IrcOutgoing::sendLast(Kind kind) {
    std::deque<Line>& lines = lines_[place(kind)];
    if (lines.empty())
        return;
    const Line last = std::move(lines.back());
    lines.pop_back();
    send_(last.text);
    if (last.gone)
        last.gone();
}

void IrcOutgoing::clear() {
    for (std::deque<Line>& lines : lines_)
        lines.clear();
    paidUntil_ = {};
    sendDue();
}

// The kind whose line goes next; nothing when no line waits.
std::optional<IrcOutgoing::Kind> IrcOutgoing::first() const {
    const bool mayBeSaid = waiting(Kind::said) > 0 && withinLimit() <= loop_.now();
    if (waiting(Kind::protocol) > 0)
        return Kind::protocol;
    if (waiting(Kind::typed) > 0)
        return mayBeSaid && typedInRow_ >= mostTypedInRow ? Kind::said : Kind::typed;
    return waiting(Kind::said) > 0 ? std::optional(Kind::said) : std::nullopt;
}

// When the next line may be said, as far as the owner's own limit goes.
Nanoseconds IrcOutgoing::withinLimit() const {
    const bool isFree = saidPerMinute_ == 0 || saidAt_.size() < saidPerMinute_;
    return isFree ? Nanoseconds(0) : saidAt_[saidAt_.size() - saidPerMinute_] + minute;
}

// When the first line of that kind may go.
Nanoseconds IrcOutgoing::due(Kind kind) const {
    const Nanoseconds byServer = paidUntil_ + cost(lines_[place(kind)].front().text) - mostAhead;
    return kind == Kind::said ? std::max(byServer, withinLimit()) : byServer;
}

void IrcOutgoing::sendFirst(Kind kind) {
    std::deque<Line>& lines = lines_[place(kind)];
    const Line line = std::move(lines.front());
    lines.pop_front();
    const Nanoseconds now = loop_.now();
    // Time in which nothing was sent isn't saved up.
    paidUntil_ = std::max(paidUntil_, now) + cost(line.text);
    typedInRow_ = kind == Kind::typed ? typedInRow_ + 1 : 0;
    if (kind == Kind::said) {
        saidAt_.push_back(now);
        while (saidAt_.front() + minute <= now)
            saidAt_.pop_front();
    }
    send_(line.text);
    if (line.gone)
        line.gone();
}

// A task that runs in here may add lines. They go in their turn, not from inside the task.
void IrcOutgoing::sendDue() {
    if (isSending_)
        return;
    isSending_ = true;
    loop_.cancel(std::exchange(next_, TimerId::none));
    while (const auto kind = first()) {
        const Nanoseconds wait = due(*kind) - loop_.now();
        if (wait > Nanoseconds(0)) {
            next_ = loop_.once(wait, [this] { sendDue(); });
            break;
        }
        sendFirst(*kind);
    }
    isSending_ = false;
}

} // namespace larkspin
