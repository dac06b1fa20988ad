// An X display of a test's own, and a hand at its mouse and keyboard.
#pragma once

#include "support/child.h"
#include "support/patience.h"

#include <csignal>
#include <unistd.h>

namespace larkspin {

class XServer {
public:
    // The server tells its number once it can be used.
    XServer()
        : process_(Child::start("Xvfb", {},
                                {nextNumber(), "-displayfd", "1", "-screen", "0", "1024x768x24",
                                 "-nolisten", "tcp", "-noreset"})),
          display_(":" + process_->line(patience)) {}
    ~XServer() { kill(); }
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;

    const std::string& display() const { return display_; }
    void kill() {
        if (process_)
            ::kill(process_->id(), SIGTERM);
        process_.reset();
    }

    // Whether xdotool did all of this. What it waits for may not come: it is given up then.
    bool hand(const std::vector<std::string>& does) const {
        const auto tool = Child::start("xdotool", {"DISPLAY=" + display_}, does);
        const bool done = tool->ends(patience) == 0;
        if (!done)
            ::kill(tool->id(), SIGKILL);
        return done;
    }

private:
    // One of this process's own: which numbers are free isn't seen from another network, and two
    // servers of one number spoil each other's files.
    static std::string nextNumber() {
        static int servers = 0;
        constexpr int first = 1000, most = 50'000, step = 7919; // none twice
        return ":" + std::to_string(first + (::getpid() + step * servers++) % most);
    }

    std::unique_ptr<Child> process_;
    std::string display_; // ":1"
};

} // namespace larkspin
