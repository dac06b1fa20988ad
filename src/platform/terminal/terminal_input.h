// The lines that the owner types or a script sends, on their way to whoever takes them: the room,
// a question that waits for its answer, or the front end itself, whose own words act at once.
//
// Lines are never put out of their order: one that has to wait holds up those after it.
#pragma once

#include "platform/posix/poll_loop.h"

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace larkspin {

class TerminalInput {
public:
    // Lines come in turn: each when those before it have done their work. If that takes longer than
    // `overtakeAfter`, as a recital does, the next one comes in the middle of it.
    TerminalInput(PollLoop& loop, Nanoseconds overtakeAfter)
        : loop_(loop), overtakeAfter_(overtakeAfter) {}

    static constexpr Nanoseconds never = Nanoseconds::max();

    struct Taker {
        // Whether a line waits for no other one's work and answers no question.
        std::function<bool(const std::string& line)> actsAtOnce;
        std::function<void(const std::string& line)> take;
        Task ended; // once, after the last line
        // How much of what lines have begun goes on once they have been taken, as recitals do. When
        // it has become less, `deliverLater` is to be called.
        std::function<std::size_t()> underWay = [] { return std::size_t{0}; };
    };

    // Until this call lines wait, but for answers.
    void open(Taker taker);

    // Called by the source of the lines. `onEmpty`'s task tells it when no lines are left, so that
    // it may bring more.
    void bring(std::string line);
    void end();
    void onEmpty(Task task) { onEmpty_ = std::move(task); }
    bool empty() const { return lines_.empty(); }

    // Drops all lines that aren't delivered yet, and ends the input.
    void cut();

    // No line is delivered before the moment that this returns. When the moment has come nearer,
    // `deliverLater` is to be called.
    void holdUntil(std::function<Nanoseconds()> moment) { heldUntil_ = std::move(moment); }
    void deliverLater();

    // The next line, for a question that is asked in the middle of a line's work. Nothing when
    // none comes in that time, the input has ended, or the questions are dropped.
    std::optional<std::string> answer(Nanoseconds limit);
    void dropQuestions() { ++drops_; }

    // The next line, whatever it says, for a question that nothing waits for. Nothing else gets it.
    void takeSecret(std::function<void(const std::string& line)> take);
    void dropSecret() { takeSecret(nullptr); }

private:
    bool nextActsAtOnce() const;
    std::optional<Nanoseconds> nextDelivery() const;
    void deliver();
    void work(const std::string& line);
    bool isHandAtWork() const;
    void endWorks();
    std::string pop();

    PollLoop& loop_;
    Nanoseconds overtakeAfter_;
    std::deque<std::string> lines_;
    Taker taker_;
    std::function<void(const std::string&)> secret_; // who takes the next line
    Task onEmpty_ = [] {};
    std::function<Nanoseconds()> heldUntil_ = [] { return Nanoseconds::min(); };
    bool isOpen_ = false;
    bool hasEnded_ = false;
    TimerId delivery_ = TimerId::none; // the next one, when it is due
    struct Work {
        Nanoseconds began;
        bool isHand;             // acts at once
        std::size_t wasUnderWay; // before it
        bool isTaken = false;
    };
    std::vector<Work> works_; // of lines, in the middle of each other
    int questions_ = 0;
    unsigned drops_ = 0; // of all questions so far
};

} // namespace larkspin
