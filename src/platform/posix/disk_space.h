// How much room there is on the disk that holds a directory. A disk that hangs, as one far away
// may, hangs whoever asks: that is a process of its own, which is waited for within a bound.
#pragma once

#include "outside/machine_facts.h"

#include <chrono>
#include <string>
#include <sys/types.h>
#include <vector>

namespace larkspin {

class DiskSpace {
public:
    // Asks the system. It runs in a process that was forked off another one's threads, where hardly
    // anything may be called.
    using Ask = bool (*)(const char* directory, DriveSpace& space);
    static bool askSystem(const char* directory, DriveSpace& space);

    explicit DiskSpace(std::chrono::milliseconds bound = std::chrono::seconds(1),
                       Ask ask = askSystem)
        : bound_(bound), ask_(ask) {}
    ~DiskSpace() { reap(); }
    DiskSpace(const DiskSpace&) = delete;
    DiskSpace& operator=(const DiskSpace&) = delete;

    // Nothing where there is no such directory, and from a disk that takes longer than the bound.
    std::optional<DriveSpace> of(const std::string& nativeDirectory);

private:
    void reap();

    std::chrono::milliseconds bound_;
    Ask ask_;
    std::vector<pid_t> hung_; // killed, but not dead yet: a disk can keep them from it
};

} // namespace larkspin
