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
    void heard(const ChatLine& line, const std::string& room) {
        const AtWork outer = std::exchange(atWork_, {room, loop_.depth()});
        if (listener_)
            listener_(line);
        atWork_ = outer;
    }

    // Where the line was said that the event at work is about; blank for an event that is about
    // none, such as a tick within its waits. What answers it belongs there, wherever the owner has
    // gone meanwhile.
    std::string roomAtWork() const {
        return loop_.depth() == atWork_.depth ? atWork_.room : std::string();
    }

    // A line that the program has said for its owner: it is heard in a later event like any other,
    // and events run once before this returns.
    void said(ChatLine line, std::string room) {
        loop_.post([this, line = std::move(line), room = std::move(room)] { heard(line, room); });
        loop_.serveTurn();
    }

private:
    struct AtWork {
        std::string room;
        int depth = 0; // of the event
    };

    EventLoop& loop_;
    Scanner::Handler listener_;
    AtWork atWork_; // the innermost one of several
};

} // namespace larkspin
