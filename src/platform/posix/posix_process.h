// The program's process on a POSIX system: the lock by which a running copy is known, and the
// end.
//
// The lock is a file in the data directory, so that there is one copy for each such directory, by
// whatever way it was reached.
#pragma once

#include "platform/posix/descriptor.h"
#include "shell/event_loop.h"
#include "shell/process.h"

#include <string>

namespace larkspin {

class PosixProcess : public Process {
public:
    explicit PosixProcess(std::string dataDirectory) // a drive path
        : dataDirectory_(std::move(dataDirectory)) {}

    // The first copy makes the data directory if it isn't there, closes it to everybody else, and
    // removes what interrupted writes have left in it. Where no lock can be made, as in a
    // directory that can't be written to, every copy counts as the only one.
    bool claimOnlyCopy() override;

    // Runs the task given to `beforeEnd` and leaves at once. No object is destroyed on the way.
    [[noreturn]] void end() override;

    // The task puts right what is outside the process, such as a terminal's mode.
    void beforeEnd(Task task) { beforeEnd_ = std::move(task); }

private:
    std::string dataDirectory_;
    Descriptor lock_; // open as long as this is the only copy
    Task beforeEnd_;
};

} // namespace larkspin
