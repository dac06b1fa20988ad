// The copy of the program that runs already, on the session bus. There is one for each data
// directory, and its name there is made of that: a copy that is started again finds the very one
// whose place it would take.
#pragma once

#include "platform/dbus/bus.h"

#include <functional>
#include <string>
#include <vector>

namespace larkspin {

// Lets the running copy be asked to open files, and to press buttons. Nothing without a bus.
class RunningCopy {
public:
    // Each is called from an event of its own, with what another copy was given.
    using Do = std::function<void(const std::vector<std::string>&)>;
    struct Wishes {
        Do open;  // addresses
        Do press; // buttons by their names
    };

    // Directories are drive paths. The loop must not run any more once this is gone.
    RunningCopy(WatchingLoop& loop, const std::string& busAddress, const std::string& dataDirectory,
                Wishes wishes);

private:
    struct Table;
    bool take(sd_bus_message* call, const Do& wish);

    WatchingLoop& loop_;
    Bus bus_;
    Wishes wishes_;
};

// Ask the running copy to open what lies at these addresses, or to press these buttons. It may be
// about to start, and is waited for, but not for long. False when it can't be reached.
bool openInRunningCopy(const std::string& busAddress, const std::string& dataDirectory,
                       const std::vector<std::string>& addresses);
bool pressInRunningCopy(const std::string& busAddress, const std::string& dataDirectory,
                        const std::vector<std::string>& buttons);

// Asks it to come forward. Nothing without a bus, or when it has no windows.
void raiseRunningCopy(const std::string& busAddress);

} // namespace larkspin
