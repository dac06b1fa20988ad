// Idle mode: while the owner is away the room is told so each minute, with the transfers under way,
// and the client's question whether he still is there is answered for him.
#pragma once

#include "chat/core.h"

#include <string>

namespace larkspin {

class HostClient;
class Transfers;

class IdleMode {
public:
    IdleMode(const Core& core, HostClient& client, Transfers& transfers)
        : core_(core), client_(client), transfers_(transfers) {}

    // The commands. Beginning again starts the count anew.
    void idle(const std::string& reason);
    void idleoff();

private:
    [[maybe_unused]] Core core_;
    [[maybe_unused]] HostClient& client_;
    [[maybe_unused]] Transfers& transfers_;
};

} // namespace larkspin
