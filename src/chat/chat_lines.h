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

    // Until there is a listener lines go by.
    void connect(Scanner::Handler listener) { listener_ = std::move(listener); }

    // A line that somebody has said at that place, which tells this room from all others. To be
    // called from an event of its own.
    void heard(const ChatLine& line, const std::string& place);

    // A line that the program has said for its owner: it is heard in a later event like any other,
    // and events run once before this returns.
    void said(ChatLine line, std::string place);

    // Whether what the event at work is about to say belongs there: where the line was heard that
    // it is about, or else where it has spoken first. A recital stays in its room, wherever the
    // owner has gone meanwhile; a tick within its waits speaks where he is.
    bool mayBeSaidAt(const std::string& place);

private:
    EventLoop& loop_;
    Scanner::Handler listener_;
    EventNotes<std::string> places_; // that an event is about; blank while it is about none
};

} // namespace larkspin
