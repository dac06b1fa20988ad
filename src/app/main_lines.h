// larkspin with one line below the other: on a terminal, and for scripts.
#pragma once

#include <string>

namespace larkspin {

class PollLoop;
struct LinuxPorts;
struct Started;

// Runs the program until it ends the process; what it was started with is done once it runs. The
// owner is told the word, if there is one.
void runInLines(PollLoop& loop, LinuxPorts& ports, const Started& started, const std::string& word);

} // namespace larkspin
