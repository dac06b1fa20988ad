// A running program whose owner sits in the room of his own, where others come in by name. What it
// says stands in `room.lines`, as always.
#pragma once

#include "chat/reply.h"
#include "host/own_room.h"
#include "support/shown_lines.h"
#include "support/virtual_machine.h"

namespace larkspin {

class OwnRoomMachine : public VirtualMachine {
    // Notes what the program says in it, and what happens in the middle of that.
    class RecordedOwnRoom : public OwnRoom {
    public:
        explicit RecordedOwnRoom(OwnRoomMachine& machine)
            : OwnRoom(machine.conversations, machine.lines, "Owner", {}), machine_(machine) {}
        void sendChatLine(const std::string& line) override {
            machine_.room.lines.push_back(line);
            machine_.loop.post([this, message = messageOf(line)] {
                if (const auto handler = machine_.room.inMessage)
                    handler(message);
            });
            OwnRoom::sendChatLine(line);
        }

    private:
        OwnRoomMachine& machine_;
    };

public:
    OwnRoomMachine() { host = &own; }

    Conversations conversations{loop, lines, "lobby"};
    RecordedOwnRoom own{*this};

    // What the owner sees of it, a line each.
    std::string seenOf(const std::function<void()>& action) {
        shown_.take();
        run(action);
        return shown_.take();
    }

private:
    ShownLines shown_{conversations, "[room] "};
};

} // namespace larkspin
