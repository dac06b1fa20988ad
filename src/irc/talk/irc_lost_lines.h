// The lines that couldn't be said: the owner is told of them, and can have his own ones said again.
// What the program says isn't told line by line.
#pragma once

#include "irc/talk/irc_said.h"
#include "shell/event_loop.h"

#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace larkspin {

class IrcSession;

class IrcLostLines {
public:
    using Tell = std::function<void(const std::string& text)>;

    IrcLostLines(EventLoop& loop, const IrcSession& session, Tell tell)
        : loop_(loop), session_(session), tell_(std::move(tell)) {}

    static constexpr std::size_t mostKept = 1000; // to be said again; the oldest ones go
    static constexpr std::size_t mostNamed = 5;   // at once; of more only the number is told

    // So long the owner isn't told again that a place doesn't hear answers.
    static constexpr std::chrono::minutes betweenWords{1};

    // `isSure` unless it may have been said all the same.
    void add(const IrcSaid& said, bool isOwners, bool isSure);

    // Tells of all since the last time.
    void tell();

    // One of the owner's was said after all, though late: he is told, and it isn't kept.
    void isFound(const IrcSaid& said);

    // The owner's, of that conversation, in order. They aren't kept any longer.
    std::vector<IrcSaid> take(std::string_view target);

    void rename(std::string_view from, const std::string& to);
    void clear() { kept_.clear(); }

private:
    struct Lost {
        IrcSaid said;
        bool isSure;
    };

    std::string place(const std::string& target) const;
    void tellOwners();
    void tellAnswers();

    EventLoop& loop_;
    const IrcSession& session_;
    Tell tell_;
    std::vector<Lost> untold_;
    std::vector<std::string> untoldAnswers_; // where they were to be said
    std::deque<IrcSaid> kept_;
    Nanoseconds quietUntil_{};
    std::string quietAbout_;
    bool hasToldHow_ = false;
};

} // namespace larkspin
