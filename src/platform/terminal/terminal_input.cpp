#include "platform/terminal/terminal_input.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

// How long a line that acts at once lets an earlier one of its kind finish. A gesture serves events
// in its middle, and the next gesture must not come in there. But one that waits for something must
// not hold up the next for long.
constexpr Nanoseconds handsPatience = std::chrono::milliseconds(50);

} // namespace

void TerminalInput::open(Taker taker) {
    taker_ = std::move(taker);
    isOpen_ = true;
    deliverLater();
}

void TerminalInput::bring(std::string line) {
    if (hasEnded_)
        return;
    lines_.push_back(std::move(line));
    deliverLater();
}

void TerminalInput::end() {
    hasEnded_ = true;
    deliverLater();
}

void TerminalInput::cut() {
    lines_.clear();
    end();
}

std::optional<std::string> TerminalInput::answer(Nanoseconds limit) {
    ++questions_;
    deliverLater();
    // A line that acts at once is no answer. It is delivered while the question waits.
    const auto isDropped = [this, before = drops_] { return drops_ != before; };
    const auto isOver = [&] {
        return isDropped() || (lines_.empty() ? hasEnded_ : !nextActsAtOnce());
    };
    loop_.waitFor(isOver, loop_.now() + limit);
    --questions_;
    std::optional<std::string> line;
    if (!isDropped() && !lines_.empty() && !nextActsAtOnce())
        line = pop();
    deliverLater();
    return line;
}

void TerminalInput::takeSecret(std::function<void(const std::string& line)> take) {
    secret_ = std::move(take);
    deliverLater();
}

bool TerminalInput::nextActsAtOnce() const {
    return isOpen_ && !lines_.empty() && (secret_ || taker_.actsAtOnce(lines_.front()));
}

// When the next line is to be delivered, or the end told. Nothing while something else has to
// happen first: a line to come, a question to be answered, a line's work to be done.
std::optional<Nanoseconds> TerminalInput::nextDelivery() const {
    if (!isOpen_ || (lines_.empty() && !hasEnded_))
        return std::nullopt;
    Nanoseconds due = loop_.now();
    if (nextActsAtOnce()) {
        if (isHandAtWork())
            due = std::max(due, works_.back().began + handsPatience);
    } else {
        if (questions_ > 0 || (!works_.empty() && overtakeAfter_ == never))
            return std::nullopt;
        if (!works_.empty())
            due = works_.back().began + overtakeAfter_;
    }
    return std::max(due, heldUntil_());
}

void TerminalInput::deliverLater() {
    endWorks();
    loop_.cancel(std::exchange(delivery_, TimerId::none));
    if (const auto due = nextDelivery())
        delivery_ =
            loop_.once(std::max(*due - loop_.now(), Nanoseconds::zero()), [this] { deliver(); });
}

void TerminalInput::deliver() {
    delivery_ = TimerId::none;
    const auto due = nextDelivery();
    // The moment may have moved since the timer was set.
    if (!due || *due > loop_.now())
        deliverLater();
    else if (!lines_.empty())
        work(pop());
    else if (taker_.ended)
        std::exchange(taker_.ended, nullptr)();
}

void TerminalInput::work(const std::string& line) {
    if (secret_) {
        std::exchange(secret_, nullptr)(line);
        return deliverLater();
    }
    const std::size_t index = works_.size();
    works_.push_back({loop_.now(), taker_.actsAtOnce(line), taker_.underWay()});
    deliverLater();
    taker_.take(line);
    works_[index].isTaken = true;
    deliverLater();
}

bool TerminalInput::isHandAtWork() const {
    return std::ranges::any_of(works_, &Work::isHand);
}

// A line's work is done when it has been taken and all that has begun since is over.
void TerminalInput::endWorks() {
    while (!works_.empty() && works_.back().isTaken &&
           taker_.underWay() <= works_.back().wasUnderWay)
        works_.pop_back();
}

std::string TerminalInput::pop() {
    std::string line = std::move(lines_.front());
    lines_.pop_front();
    if (lines_.empty())
        onEmpty_();
    return line;
}

} // namespace larkspin
