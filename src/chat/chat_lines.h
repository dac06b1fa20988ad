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

    // A line that somebody has said at that place, which tells this room from all others. To be
    // called from an event of its own.
    void heard(const ChatLine& line, const std::string& place) {
        const Heard outer = std::exchange(heard_, {place, loop_.atWork()});
        if (listener_)
            listener_(line);
        heard_ = outer;
    }

    // Where the line was said that the event at work is about; blank for an event that is about
    // none, such as a tick within its waits. What answers it belongs there, wherever the owner has
    // gone meanwhile.
    std::string placeAtWork() const {
        return loop_.atWork() == heard_.event ? heard_.place : std::string();
    }

    // A line that the program has said for its owner: it is heard in a later event like any other,
    // and events run once before this returns.
    void said(ChatLine line, std::string place) {
        loop_.post(
            [this, line = std::move(line), place = std::move(place)] { heard(line, place); });
        loop_.serveTurn();
    }

private:
    struct Heard {
        std::string place;
        EventAtWork event;
    };

    EventLoop& loop_;
    Scanner::Handler listener_;
    Heard heard_; // the innermost one of several
};

} // namespace larkspin
