#include "outside/machine_commands.h"

namespace larkspin {

void MachineCommands::cinfo() {}
void MachineCommands::free(const std::string&) {}
void MachineCommands::ut() {}
void MachineCommands::rstart() {}
void MachineCommands::sdown() {}
void MachineCommands::boxComputer() {}
void MachineCommands::boxUptime() {}
void MachineCommands::restartComputer() {}
void MachineCommands::shutDownComputer() {}

} // namespace larkspin
