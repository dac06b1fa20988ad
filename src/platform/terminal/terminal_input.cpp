#include "platform/terminal/terminal_input.h"

#include <algorithm>
#include <utility>

namespace larkspin {

void TerminalInput::open(Take take, Task ended) {
    take_ = std::move(take);
    ended_ = std::move(ended);
    deliverLater();
}

void TerminalInput::bring(std::string line) {
    lines_.push_back(std::move(line));
    deliverLater();
}

void TerminalInput::end() {
    hasEnded_ = true;
    deliverLater();
}

std::optional<std::string> TerminalInput::answer(Nanoseconds limit) {
    ++questions_;
    loop_.waitFor([this] { return !lines_.empty() || hasEnded_; }, loop_.now() + limit);
    --questions_;
    std::optional<std::string> line;
    if (!lines_.empty())
        line = pop();
    deliverLater();
    return line;
}

void TerminalInput::deliverLater() {
    loop_.cancel(std::exchange(delivery_, TimerId::none));
    const bool blocked = !take_ || questions_ > 0 || (working_ > 0 && overtakeAfter_ == never);
    if (blocked || (lines_.empty() && !hasEnded_))
        return;
    const Nanoseconds now = loop_.now();
    const Nanoseconds due = working_ > 0 ? workBegan_ + overtakeAfter_ : now;
    delivery_ = loop_.every(std::max(due - now, Nanoseconds(1)), [this] { deliver(); });
}

void TerminalInput::deliver() {
    loop_.cancel(std::exchange(delivery_, TimerId::none));
    if (questions_ > 0)
        return;
    if (!lines_.empty())
        work(pop());
    else if (hasEnded_ && ended_)
        std::exchange(ended_, nullptr)();
}

void TerminalInput::work(const std::string& line) {
    const Nanoseconds outerBegan = std::exchange(workBegan_, loop_.now());
    ++working_;
    deliverLater();
    take_(line);
    --working_;
    workBegan_ = outerBegan;
    deliverLater();
}

std::string TerminalInput::pop() {
    std::string line = std::move(lines_.front());
    lines_.pop_front();
    if (lines_.empty())
        onEmpty_();
    return line;
}

} // namespace larkspin
