// How long the owner has been online, as his client tells it.
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
    Core core_;
    HostClient& client_;
    InTurn inTurn_; // the client has one clock
};

} // namespace larkspin
