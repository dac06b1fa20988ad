// The lines of a room on their way to whoever listens. Each room brings its lines in here, so that
// they arrive the same way wherever they were said.
#pragma once

#include "chat/scanner.h"
#include "shell/event_loop.h"

#include <string>
#include <utility>

namespace larkspin {

class ChatLines {
public:
    explicit ChatLines(EventLoop& loop) : loop_(loop) {}

    // Until there is a listener lines go by.
    void connect(Scanner::Handler listener) { listener_ = std::move(listener); }

    // A line that somebody has said in that room. To be called from an event of its own.
    void heard(const ChatLine& line, const std::string& room = {}) {
        const std::string outer = std::exchange(roomAtWork_, room);
        if (listener_)
            listener_(line);
        roomAtWork_ = outer;
    }

    // Where the line was said that is being worked on, the innermost one of several; blank for
    // none. What answers it belongs there, wherever the owner has gone meanwhile.
    const std::string& roomAtWork() const { return roomAtWork_; }

    // A line that the program has said for its owner: it is heard in a later event like any other,
    // and events run once before this returns.
    void said(ChatLine line, std::string room = {}) {
        loop_.post([this, line = std::move(line), room = std::move(room)] { heard(line, room); });
        loop_.serveTurn();
    }

private:
    EventLoop& loop_;
    Scanner::Handler listener_;
    std::string roomAtWork_;
};

} // namespace larkspin
