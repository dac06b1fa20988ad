// What is recited in the room: line after line, with a pause after each. A recital under way is
// data that a timer advances. It takes no place on the stack, and whoever begins it goes on at
// once.
//
// The one begun last goes on, and those before it wait until it has ended. It lets every handler
// end that has begun after it, such as one with a box open. It ends with its run of the program.
#pragma once

#include "chat/chat_lines.h"
#include "shell/this_run.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace larkspin {

class Reply;

class Recitals {
public:
    Recitals(const AppState& state, EventLoop& loop, ChatLines& lines, Reply& reply)
        : state_(state), loop_(loop), lines_(lines), reply_(reply) {}
    ~Recitals() { loop_.cancel(timer_); }
    Recitals(const Recitals&) = delete;
    Recitals& operator=(const Recitals&) = delete;

    // Does what comes next, such as saying a line, and tells how many seconds to pause after it;
    // nothing at the end. After a pause of 0 the next step comes at once, unless another recital
    // has begun within this one. In the pauses anything may have changed.
    using Step = std::function<std::optional<double>()>;

    // What comes before the first pause is done when this returns.
    void begin(Step step);

    // The same with a line in front, and the pause after it.
    void begin(std::string opening, double pause, Step rest);

    // Lines with that pause between them, each made when its turn has come.
    using Line = std::function<std::string()>;
    void tell(std::vector<Line> lines, double pause);

    // How many are under way, and what is to be done whenever one has ended.
    std::size_t count() const { return recitals_.size(); }
    void onEnd(Task task) { onEnd_ = std::move(task); }

private:
    struct Recital {
        Step step;
        ThisRun run;
        std::uint64_t event;  // in which it has begun
        ChatLines::Talk talk; // what its lines are about
        bool isStepping = false, isOver = false;
        double pause = 0;                    // after the last step
        std::optional<Nanoseconds> due = {}; // the end of that pause, once it has begun
    };

    void advance(Recital& recital);
    void goOn();
    void settle();
    void wake(Nanoseconds moment, Task task);

    const AppState& state_;
    EventLoop& loop_;
    ChatLines& lines_;
    Reply& reply_;
    std::deque<Recital> recitals_;  // the one begun last is the last
    TimerId timer_ = TimerId::none; // of that one
    Task onEnd_ = [] {};
};

} // namespace larkspin
