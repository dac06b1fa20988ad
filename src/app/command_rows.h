// The command table: the whole vocabulary.
#pragma once

#include "chat/dispatch.h"

#include <vector>

namespace larkspin {

class Program;

enum class HandledBy { NiteScan1, NiteScan2, NiteScan3 };

// The rows of one scanner's handler in test order. The rows refer to the program.
std::vector<CommandRow> commandRows(Program& program, HandledBy handler);

} // namespace larkspin
