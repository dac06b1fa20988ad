// What the program does for its owner in the chat client, put together: moderation of the room, the
// watch over file transfers, errands, and idle mode.
#pragma once

#include "chat/core.h"
#include "host/chores.h"
#include "host/host_client.h"
#include "host/idle_mode.h"
#include "host/moderation.h"
#include "host/online_time.h"
#include "host/transfers.h"

namespace larkspin {

class Launcher;

// What the units use of the floors below, beside the core.
struct HostNeeds {
    HostClient& client;
    Launcher& launcher;
};

struct Host {
    Host(const Core& core, const HostNeeds& needs) : core_(core), needs_(needs) {}

private: // what the units are made with
    Core core_;
    HostNeeds needs_;

public:
    Moderation moderation{core_, needs_.client};
    Transfers transfers{core_, needs_.client};
    Chores chores{core_, needs_.client, needs_.launcher};
    OnlineTime onlineTime{core_, needs_.client};
    IdleMode idle{core_, needs_.client, transfers};
};

} // namespace larkspin
