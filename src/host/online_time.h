// How long the owner has been online, read off the client's own clock.
#pragma once

#include "chat/core.h"
#include "host/in_turn.h"

namespace larkspin {

class HostClient;

class OnlineTime {
public:
    OnlineTime(const Core& core, HostClient& client)
        : core_(core), client_(client), inTurn_(core.state) {}

    void ot();

private:
    void readClock();

    Core core_;
    HostClient& client_;
    InTurn inTurn_; // there is one notice
};

} // namespace larkspin
