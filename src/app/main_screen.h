// larkspin on all of a terminal's screen.
#pragma once

namespace larkspin {

class PollLoop;
class Screen;
struct LinuxPorts;
struct Started;

// Runs the program there until it ends the process; what it was started with is done once it runs.
void runOnScreen(PollLoop& loop, Screen& screen, LinuxPorts& ports, const Started& started);

} // namespace larkspin
