#include "support/x_server.h"

#include <csignal>

namespace larkspin {

namespace {

constexpr std::chrono::seconds patience(20);

} // namespace

// It takes a number that is free, and tells it once it can be used.
XServer::XServer()
    : process_(Child::start(
          "Xvfb", {},
          {"-displayfd", "1", "-screen", "0", "1024x768x24", "-nolisten", "tcp", "-noreset"})),
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
