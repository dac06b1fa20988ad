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
    // A script's lines come in turn: each once the one before it has done its work, waits
    // included. An owner's line comes at once, also in the middle of another one's work.
    enum class Pace { atOnce, inTurn };
    using Take = std::function<void(const std::string& line)>;

    TerminalInput(PollLoop& loop, Pace pace) : loop_(loop), pace_(pace) {}

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
    std::string pop();

    PollLoop& loop_;
    Pace pace_;
    std::deque<std::string> lines_;
    Take take_;
    Task ended_;
    Task onEmpty_ = [] {};
    bool hasEnded_ = false;
    bool delivering_ = false; // a delivery is posted
    bool working_ = false;    // a line in turn does its work
    int questions_ = 0;
};

} // namespace larkspin
