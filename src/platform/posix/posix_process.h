// The program's process on a POSIX system: the lock by which a running copy is known, and the
// end.
#pragma once

#include "shell/event_loop.h"
#include "shell/process.h"

#include <string>

namespace larkspin {

class PosixProcess : public Process {
public:
    // The lock file (a native path) is made if it isn't there, with the directory above it.
    explicit PosixProcess(std::string lockFile) : lockFile_(std::move(lockFile)) {}
    ~PosixProcess() override;
    PosixProcess(const PosixProcess&) = delete;
    PosixProcess& operator=(const PosixProcess&) = delete;

    // Where no lock can be made at all, every copy counts as the only one.
    bool claimOnlyCopy() override;

    // Runs what `beforeEnd` said and leaves at once: nothing is destroyed on the way.
    [[noreturn]] void end() override;

    // What has to be put right outside the process, such as a terminal's mode.
    void beforeEnd(Task task) { beforeEnd_ = std::move(task); }

private:
    std::string lockFile_;
    int lock_ = -1; // open while the place is held
    Task beforeEnd_;
};

} // namespace larkspin
