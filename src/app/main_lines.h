// larkspin with one line below the other: on a terminal, and for scripts.
#pragma once

#include <string>
#include <vector>

namespace larkspin {

class PollLoop;
struct LinuxPorts;

// Runs the program until it ends the process; files are played or added as it has started. The
// owner is told the word, if there is one.
void runInLines(PollLoop& loop, LinuxPorts& ports, const std::vector<std::string>& files,
                const std::string& word);

} // namespace larkspin
