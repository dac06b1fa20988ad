// The port to what a machine can tell of itself. What it can't tell is empty or 0. Nothing throws.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

namespace larkspin {

struct DisplaySize {
    int bits = 0; // of colour for a pixel
    int width = 0, height = 0;
};

struct DriveSpace {
    std::uint64_t total = 0, free = 0; // bytes; free with what is kept for the system
    bool isUnanswered = false;         // the disk doesn't answer
};

class MachineFacts {
public:
    virtual ~MachineFacts() = default;

    virtual std::string systemName() = 0; // in lower case
    virtual std::uint64_t memoryBytes() = 0;
    virtual DisplaySize display() = 0;
    virtual std::chrono::milliseconds uptime() = 0;

    // The space of the drive with that root (`c:\`), or of the one that holds that directory, which
    // may be named in any way that the owner names one: `c:\music`, `/music`, `~/music`. Nothing
    // when there is no such place. Events are served while the disk takes its time, up to a bound.
    virtual std::optional<DriveSpace> driveSpace(const std::string& path) = 0;
};

} // namespace larkspin
