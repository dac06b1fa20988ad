// What a Linux machine tells of itself.
#pragma once

#include "outside/machine_facts.h"
#include "platform/posix/owners_disk.h"
#include "platform/posix/posix_directories.h"

#include <functional>
#include <string>
#include <string_view>

namespace larkspin {

// The system's name and version out of what `/etc/os-release` reads, in lower case.
std::string systemNameIn(std::string_view osRelease);

class PosixMachineFacts : public MachineFacts {
public:
    // Only the front end knows what display it uses.
    using Display = std::function<DisplaySize()>;

    PosixMachineFacts(OwnersDisk& disk, Display display)
        : disk_(disk), display_(std::move(display)) {}

    std::string systemName() override;
    std::uint64_t memoryBytes() override;
    DisplaySize display() override { return display_(); }
    std::chrono::milliseconds uptime() override; // with the time that it slept
    std::optional<DriveSpace> driveSpace(const std::string& path) override;

private:
    OwnersDisk& disk_;
    Display display_;
    PosixDirectories directories_; // which know what path the owner means
};

} // namespace larkspin
