#include "platform/terminal/terminal_input.h"

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
    const bool blocked = !take_ || delivering_ || working_ || questions_ > 0;
    if (blocked || (lines_.empty() && !hasEnded_))
        return;
    delivering_ = true;
    loop_.post([this] { deliver(); });
}

void TerminalInput::deliver() {
    delivering_ = false;
    if (questions_ > 0)
        return;
    if (lines_.empty()) {
        if (hasEnded_ && ended_)
            std::exchange(ended_, nullptr)();
        return;
    }
    const std::string line = pop();
    working_ = pace_ == Pace::inTurn;
    deliverLater();
    take_(line);
    working_ = false;
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
