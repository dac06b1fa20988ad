// The lines of a room on their way to whoever listens, and the places where they are said. Each
// room brings its lines in here, so that they arrive the same way wherever they were said.
#pragma once

#include "chat/scanner.h"
#include "shell/event_loop.h"
#include "shell/event_notes.h"

#include <functional>
#include <string>
#include <utility>

namespace larkspin {

class ChatLines {
public:
    explicit ChatLines(EventLoop& loop) : loop_(loop), talks_(loop) {}

    // Lines that come before there is a listener are lost.
    void connect(Scanner::Handler listener) { listener_ = std::move(listener); }

    // A line that somebody has said. `place` tells the room in which it was said from all others.
    // To be called from an event of its own.
    void heard(const ChatLine& line, const std::string& place);

    // A line that the program has said for its owner: it is heard in a later event like any other,
    // and events run once before this returns.
    void said(ChatLine line, std::string place);

    // The event at work speaks at that place, and stays with it: where the line was heard that it
    // is about, or else where it has spoken first. So a recital stays in its room, wherever the
    // owner has gone meanwhile, and a tick during its waits speaks where the owner is.
    void speaksAt(const std::string& place);

    // What the event at work has to do with the rooms. What goes on in later events, as a recital
    // does, takes it along.
    struct Talk {
        std::string place; // blank while it is about none
        bool hasSpoken = false;
        bool isRecited = false;
        // Where the room doesn't take lines as fast as they are recited: whether to wait before the
        // next one. Any other event waits as it speaks.
        std::function<bool()> isAhead;
    };
    Talk& talk() { return talks_.atWork(); } // good until events are served
    void goOnWith(Talk talk) { talks_.atWork() = std::move(talk); }

private:
    EventLoop& loop_;
    Scanner::Handler listener_;
    EventNotes<Talk> talks_;
};

} // namespace larkspin
