// The part of the chat client that the replies need: who the owner is, and how a line is said.
#pragma once

#include <string>

namespace larkspin {

class Room {
public:
    virtual ~Room() = default;

    // The name under which the owner is signed on; empty when he is not. Asked at every line.
    virtual std::string currentScreenName() = 0;

    // Says the line in the room in the owner's name, tags and all, and lets events run once on the
    // way. The line comes back through ChatLines like any other. Without a room nothing happens.
    virtual void sendChatLine(const std::string& line) = 0;

    // Shows the owner alone what the program has to tell him beside the lines. False when the
    // client has no place for that.
    virtual bool tellOwner(const std::string&) { return false; }

    // Forgets what was said but is still on its way out: the owner has broken it off.
    virtual void dropUnsaid() {}

    // Empties the line that the owner is about to say. Without a room nothing happens.
    virtual void clearChatInput() = 0;

    // Brings the client to the front, so that the owner can type. Where the owner is there already
    // nothing happens.
    virtual void bringHostForward() {}
};

} // namespace larkspin
