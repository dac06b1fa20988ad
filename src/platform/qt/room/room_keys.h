// The keys by which the owner gets about in the room's window, wherever the focus is in it.
#pragma once

#include "shell/event_loop.h"

#include <functional>

class QWidget;

namespace larkspin {

class Conversation;
class Conversations;

struct RoomKeys {
    std::function<void(const Conversation* conversation)> goTo; // null for none
    Task toEnd, showLinks;
};

// Alt with a number leads where `/room` does with that number, Alt with up and down to what stands
// above and below, with A to what is unread; with End to the end, with L to the links. The
// conversations must outlive the window.
void takeRoomKeys(QWidget& window, const Conversations& conversations, const RoomKeys& keys);

} // namespace larkspin
