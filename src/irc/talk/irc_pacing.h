// Keeps the program from running ahead of what the server takes, so that what it recites can be
// broken off. The first line that an event says doesn't wait: what is to be done after an answer
// is done at once. After each further one the event waits, as long as too many are on their way.
#pragma once

#include "chat/chat_lines.h"
#include "irc/connection/irc_outgoing.h"
#include "shell/event_loop.h"

#include <chrono>
#include <cstddef>

namespace larkspin {

class IrcPacing {
public:
    IrcPacing(EventLoop& loop, ChatLines& lines, const IrcOutgoing& outgoing)
        : loop_(loop), lines_(lines), outgoing_(outgoing) {}

    static constexpr std::size_t mostAhead = 1; // line

    // No longer than that and what the owner's limit takes for a line.
    static constexpr std::chrono::seconds longest{20};

    void limitSaid(int linesPerMinute); // 0 for no limit

    // After each line that the event at work says. May wait; a recital is told to.
    void spoke();

private:
    EventLoop& loop_;
    ChatLines& lines_;
    const IrcOutgoing& outgoing_;
    Nanoseconds perLine_{};
};

} // namespace larkspin
