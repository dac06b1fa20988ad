// A running program whose owner sits in the room of his own, where others come in by name. What it
// says stands in `room.lines`, as always.
#pragma once

#include "chat/reply.h"
#include "host/own_room.h"
#include "support/virtual_machine.h"

namespace larkspin {

class OwnRoomMachine : public VirtualMachine {
public:
    OwnRoomMachine() { host = &own; }

    OwnRoom own{lines,
                "Owner",
                {[this](const ChatLine& line) { see(line); },
                 [this](const std::string& text) { seen_ += "[room] " + text + '\n'; }}};

    // What the owner sees of it, a line each.
    std::string seenOf(const std::function<void()>& action) {
        seen_.clear();
        run(action);
        return seen_;
    }

private:
    void see(const ChatLine& line) {
        seen_ += line.speaker + ": " + messageOf(line.text) + '\n';
        if (!isReply(line.text))
            return;
        room.lines.push_back(line.text);
        loop.post([this, message = messageOf(line.text)] {
            if (const auto handler = room.inMessage)
                handler(message);
        });
    }

    std::string seen_;
};

} // namespace larkspin
