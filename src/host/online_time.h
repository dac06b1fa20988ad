// How long the owner has been online, read off the client's own clock.
#pragma once

#include "chat/core.h"

namespace larkspin {

class HostClient;

class OnlineTime {
public:
    OnlineTime(const Core& core, HostClient& client) : core_(core), client_(client) {}

    void ot();

private:
    Core core_;
    HostClient& client_;
};

} // namespace larkspin
