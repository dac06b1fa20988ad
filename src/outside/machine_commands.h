// What the machine is, how its drives are filled and how long it has been up; and its restart and
// shut-down.
#pragma once

#include "chat/core.h"

#include <string>

namespace larkspin {

class MachineFacts;
class Power;

class MachineCommands {
public:
    MachineCommands(const Core& core, MachineFacts& facts, Power& power)
        : core_(core), facts_(facts), power_(power) {}

    // The commands. The drive is a letter, or a directory on the drive that is meant.
    void cinfo();
    void free(const std::string& drive);
    void ut();
    void rstart();
    void sdown();

    // The tray's entries.
    void boxComputer();
    void boxUptime();
    void restartComputer();
    void shutDownComputer();

private:
    void twice(void (Power::*order)());

    Core core_;
    MachineFacts& facts_;
    Power& power_;
};

} // namespace larkspin
