// larkspin in a terminal: on the whole screen where both ends are a terminal that can be drawn on,
// with one line below the other elsewhere, and where that is asked for.
#include "app/main_lines.h"
#include "app/main_linux.h"
#include "app/main_screen.h"
#include "app/main_start.h"
#include "platform/posix/poll_loop.h"
#include "platform/posix/user_directories.h"
#include "platform/terminal/dumb_terminal.h"
#include "platform/terminal/queued_output.h"
#include "platform/terminal/screen/screen.h"

#include <cstdlib>
#include <malloc.h>
#include <string>
#include <unistd.h>

using namespace larkspin;

namespace {

constexpr DisplayOption options[] = {
    {.name = "--line", .help = "one line below the other, rather than the whole terminal"}};

// Many a terminal is only unknown to the system, as over a connection from elsewhere.
std::string cantBeDrawnOn() {
    return std::string("this terminal can't be drawn on: lines come one below the other") +
           (isDumbTerminal() ? "" : ", unless TERM=xterm-256color suits it");
}

// What a picture or a playlist took for a moment goes back at once. By itself the heap keeps as
// much as was once freed in one piece.
void keepHeapSmall() {
    ::mallopt(M_MMAP_THRESHOLD, 256 * 1024);
}

// Doesn't return where there is a screen.
void runOnScreenIfThereIsOne(PollLoop& loop, LinuxPorts& ports, const Started& started) {
    QueuedOutput output(loop, STDOUT_FILENO);
    if (const auto screen = Screen::open(loop, output))
        runOnScreen(loop, *screen, ports, started);
}

} // namespace

int main(int count, char** arguments) {
    keepHeapSmall();
    const Started started = readStart(count, arguments, "larkspin-tty", options);
    LinuxDisk disk;
    if (const auto handing = handOver(started, disk.process, userDataDirectory());
        handing != Handing::notNeeded)
        return handing == Handing::done ? EXIT_SUCCESS : EXIT_FAILURE;
    PollLoop loop;
    LinuxPorts ports(disk, loop);
    const bool isOnScreen =
        started.display.empty() && ::isatty(STDIN_FILENO) == 1 && ::isatty(STDOUT_FILENO) == 1;
    if (isOnScreen)
        runOnScreenIfThereIsOne(loop, ports, started);
    runInLines(loop, ports, started, isOnScreen ? cantBeDrawnOn() : "");
}
