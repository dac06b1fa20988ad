// The copy of the program that runs already, on the session bus. There is one for each data
// directory, and its name there is made of that: a copy that is started again finds the very one
// whose place it would take.
#pragma once

#include "platform/dbus/bus.h"

#include <functional>
#include <string>
#include <vector>

namespace larkspin {

// Lets the running copy be asked to open files. Nothing without a bus.
class RunningCopy {
public:
    // Is called from an event of its own, with addresses as another copy was given them.
    using Open = std::function<void(const std::vector<std::string>& addresses)>;

    // Directories are drive paths. The loop must not run any more once this is gone.
    RunningCopy(WatchingLoop& loop, const std::string& busAddress, const std::string& dataDirectory,
                Open open);

private:
    struct Table;
    bool take(sd_bus_message* call);

    WatchingLoop& loop_;
    Bus bus_;
    Open open_;
};

// Gives the addresses to the running copy. It may be about to start, and is waited for, but not for
// long. False when it can't be reached.
bool handToRunningCopy(const std::string& busAddress, const std::string& dataDirectory,
                       const std::vector<std::string>& addresses);

// Asks it to come forward. Nothing without a bus, or when it has no windows.
void raiseRunningCopy(const std::string& busAddress);

} // namespace larkspin
