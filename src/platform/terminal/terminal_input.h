// The lines that the owner types or a script sends, on their way to whoever takes them: the
// room, or a question that waits for its answer.
#pragma once

#include "platform/posix/poll_loop.h"

#include <deque>
#include <functional>
#include <optional>
#include <string>

namespace larkspin {

class TerminalInput {
public:
    // Lines come in turn: each once the one before it has done its work. Where that takes longer
    // than this span, as a recital does, the next one comes in the middle of it.
    TerminalInput(PollLoop& loop, Nanoseconds overtakeAfter)
        : loop_(loop), overtakeAfter_(overtakeAfter) {}

    static constexpr Nanoseconds never = Nanoseconds::max();
    using Take = std::function<void(const std::string& line)>;

    // Until this call lines wait. `ended` is called once, behind the last line.
    void open(Take take, Task ended);

    // From the source of the lines. It is told when there are none left and may then bring more.
    void bring(std::string line);
    void end();
    void onEmpty(Task task) { onEmpty_ = std::move(task); }
    bool empty() const { return lines_.empty(); }

    // The next line, for a question that is asked in the middle of a line's work. Nothing when
    // none comes in that time or the input has ended.
    std::optional<std::string> answer(Nanoseconds limit);

private:
    void deliverLater();
    void deliver();
    void work(const std::string& line);
    std::string pop();

    PollLoop& loop_;
    Nanoseconds overtakeAfter_;
    std::deque<std::string> lines_;
    Take take_;
    Task ended_;
    Task onEmpty_ = [] {};
    bool hasEnded_ = false;
    TimerId delivery_ = TimerId::none; // the next one, when it is due
    int working_ = 0;                  // lines that do their work, in the middle of each other
    Nanoseconds workBegan_{};          // of the innermost one
    int questions_ = 0;
};

} // namespace larkspin
