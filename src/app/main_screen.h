// larkspin on all of a terminal's screen.
#pragma once

#include <string>
#include <vector>

namespace larkspin {

class PollLoop;
class Screen;
struct LinuxPorts;

// Runs the program there until it ends the process; files are played or added as it has started.
void runOnScreen(PollLoop& loop, Screen& screen, LinuxPorts& ports,
                 const std::vector<std::string>& files);

} // namespace larkspin
