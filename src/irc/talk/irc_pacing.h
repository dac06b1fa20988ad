// Keeps the program from running ahead of what the server takes, so that what it recites can be
// broken off. The first line that an event says doesn't wait: what is to be done after an answer
// is done at once. After each further one the event waits, as long as too many are on their way.
#pragma once

#include "irc/connection/irc_outgoing.h"
#include "shell/event_loop.h"
#include "shell/event_notes.h"

#include <chrono>
#include <cstddef>

namespace larkspin {

class IrcPacing {
public:
    IrcPacing(EventLoop& loop, const IrcOutgoing& outgoing)
        : loop_(loop), outgoing_(outgoing), haveSpoken_(loop) {}

    static constexpr std::size_t mostAhead = 3; // lines

    // No longer than that and what the owner's limit takes for a line.
    static constexpr std::chrono::seconds longest{20};

    void limitSaid(int linesPerMinute); // 0 for no limit

    // After each line that the event at work says. May wait.
    void spoke();

    // Whether the event at work has said anything.
    bool hasSpoken() { return haveSpoken_.atWork().yes; }

private:
    EventLoop& loop_;
    const IrcOutgoing& outgoing_;
    Nanoseconds perLine_{};
    struct Spoken {
        bool yes = false;
    };
    EventNotes<Spoken> haveSpoken_;
};

} // namespace larkspin
