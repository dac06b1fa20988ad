// What lies outside the program, put together: the other player on the machine, and the machine.
#pragma once

#include "outside/machine_commands.h"
#include "outside/machine_facts.h"
#include "outside/other_player.h"
#include "outside/power.h"
#include "outside/winamp.h"

namespace larkspin {

struct OutsideNeeds {
    OtherPlayer& player;
    MachineFacts& facts;
    Power& power;
};

struct Outside {
    Outside(const Core& core, const OutsideNeeds& needs) : core_(core), needs_(needs) {}

private: // what the units are made with
    Core core_;
    OutsideNeeds needs_;

public:
    Winamp winamp{core_, needs_.player};
    MachineCommands machine{core_, needs_.facts, needs_.power};
};

} // namespace larkspin
