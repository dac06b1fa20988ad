#include "support/x_server.h"
#include "support/patience.h"

#include <csignal>
#include <unistd.h>

namespace larkspin {

namespace {

// One of this process's own: which numbers are free isn't seen from another network, and two
// servers of one number spoil each other's files.
std::string nextNumber() {
    static int servers = 0;
    constexpr int first = 1000, most = 50'000, step = 7919; // none twice
    return ":" + std::to_string(first + (::getpid() + step * servers++) % most);
}

} // namespace

// The server tells its number once it can be used.
XServer::XServer()
    : process_(Child::start("Xvfb", {},
                            {nextNumber(), "-displayfd", "1", "-screen", "0", "1024x768x24",
                             "-nolisten", "tcp", "-noreset"})),
      display_(":" + process_->line(patience)) {}

void XServer::kill() {
    if (process_)
        ::kill(process_->id(), SIGTERM);
    process_.reset();
}

bool XServer::hand(const std::vector<std::string>& does) const {
    const auto tool = Child::start("xdotool", {"DISPLAY=" + display_}, does);
    const bool done = tool->ends(patience) == 0;
    if (!done)
        ::kill(tool->id(), SIGKILL);
    return done;
}

} // namespace larkspin
