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
    void tick();
    void countMinute();
    void answerQuestion();
    void reportTransfers();

    Core core_;
    HostClient& client_;
    Transfers& transfers_;
    bool reporting_ = false; // a report's box may stand for longer than a minute
};

} // namespace larkspin
