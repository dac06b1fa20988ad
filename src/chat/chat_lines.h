// The lines of a room on their way to whoever listens. Each room brings its lines in here, so that
// they arrive the same way wherever they were said.
#pragma once

#include "chat/scanner.h"
#include "shell/event_loop.h"

#include <utility>

namespace larkspin {

class ChatLines {
public:
    explicit ChatLines(EventLoop& loop) : loop_(loop) {}

    // Until there is a listener lines go by.
    void connect(Scanner::Handler listener) { listener_ = std::move(listener); }

    // A line that somebody has said. To be called from an event of its own.
    void heard(const ChatLine& line) {
        if (listener_)
            listener_(line);
    }

    // A line that the program has said for its owner: it is heard in a later event like any other,
    // and events run once before this returns.
    void said(ChatLine line) {
        loop_.post([this, line = std::move(line)] { heard(line); });
        loop_.serveTurn();
    }

private:
    EventLoop& loop_;
    Scanner::Handler listener_;
};

} // namespace larkspin
