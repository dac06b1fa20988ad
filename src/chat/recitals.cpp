#include "chat/recitals.h"

#include "chat/reply.h"
#include "shell/event_loop.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

constexpr auto betweenLooks = 50ms; // at what a room has taken

} // namespace

void Recitals::begin(Step step) {
    loop_.cancel(std::exchange(timer_, TimerId::none));
    recitals_.push_back({std::move(step), ThisRun(state_), loop_.atWork().number, lines_.talk()});
    advance(recitals_.back());
}

void Recitals::begin(std::string opening, double pause, Step rest) {
    begin([this, opening = std::move(opening), pause, rest = std::move(rest),
           isOpen = false]() mutable {
        if (std::exchange(isOpen, true))
            return rest();
        reply_.saychat(opening);
        return std::optional(pause);
    });
}

void Recitals::tell(std::vector<Line> lines, double pause) {
    begin([this, lines = std::move(lines), pause, next = std::size_t{0}]() mutable {
        reply_.saychat(lines[next]());
        return ++next < lines.size() ? std::optional(pause) : std::nullopt;
    });
}

// A step serves events, in which others may begin, end, and wait for this one's turn. None that has
// begun before it goes on meanwhile, so that the recital stays where it is.
void Recitals::advance(Recital& recital) {
    recital.isStepping = true;
    std::optional<double> pause;
    do
        pause = recital.run.lasts() ? recital.step() : std::nullopt;
    while (pause && *pause <= 0 && &recital == &recitals_.back());
    recital.isStepping = false;
    recital.isOver = !pause || !recital.run.lasts();
    recital.pause = pause.value_or(0);
    recital.due.reset();
    recital.talk = lines_.talk();
    settle();
}

void Recitals::goOn() {
    assert(!recitals_.empty() && !recitals_.back().isStepping);
    Recital& recital = recitals_.back();
    recital.talk.isRecited = true;
    recital.talk.isAhead = {};
    lines_.goOnWith(recital.talk);
    advance(recital);
}

// The pause after a line begins when no other recital is begun in the middle of that line any more,
// and the room has taken enough of what was said. The room is asked once: its answer may change
// from one moment to the next, and a recital that is over must not go on.
void Recitals::settle() {
    const auto isAhead = [](const Recital& recital) {
        return !recital.due && recital.talk.isAhead && recital.talk.isAhead();
    };
    const std::size_t before = recitals_.size();
    bool isHeld = false; // the last one
    while (!recitals_.empty() && !(isHeld = isAhead(recitals_.back())) && recitals_.back().isOver)
        recitals_.pop_back();
    if (!recitals_.empty() && !recitals_.back().isStepping) {
        Recital& last = recitals_.back();
        if (isHeld) {
            wake(loop_.now() + betweenLooks, [this] { settle(); });
        } else {
            const std::chrono::duration<double> pause(last.pause);
            last.due = last.due.value_or(loop_.now() + std::chrono::round<Nanoseconds>(pause));
            wake(*last.due, [this] { goOn(); });
        }
    }
    if (recitals_.size() < before)
        onEnd_();
}

void Recitals::wake(Nanoseconds moment, Task task) {
    loop_.cancel(timer_);
    const Nanoseconds span = std::max(moment - loop_.now(), Nanoseconds::zero());
    timer_ = loop_.goOn(recitals_.back().event, span, std::move(task));
}

} // namespace larkspin
