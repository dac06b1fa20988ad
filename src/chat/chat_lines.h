// The lines of a room on their way to whoever listens, and the places where they are said. Each
// room brings its lines in here, so that they arrive the same way wherever they were said.
#pragma once

#include "chat/scanner.h"
#include "shell/event_loop.h"
#include "shell/event_notes.h"

#include <string>

namespace larkspin {

class ChatLines {
public:
    explicit ChatLines(EventLoop& loop) : loop_(loop), places_(loop) {}

    // Lines that come before there is a listener are lost.
    void connect(Scanner::Handler listener) { listener_ = std::move(listener); }

    // A line that somebody has said. `place` tells the room in which it was said from all others.
    // To be called from an event of its own.
    void heard(const ChatLine& line, const std::string& place);

    // A line that the program has said for its owner: it is heard in a later event like any other,
    // and events run once before this returns.
    void said(ChatLine line, std::string place);

    // Whether the event at work may speak at that place: it may where the line was heard that it is
    // about, or else where it has spoken first. So a recital stays in its room, wherever the owner
    // has gone meanwhile, and a tick during its waits speaks where the owner is.
    bool mayBeSaidAt(const std::string& place);

private:
    EventLoop& loop_;
    Scanner::Handler listener_;
    EventNotes<std::string> places_; // the place that an event is about; blank for none
};

} // namespace larkspin
