// Which disks may be far away: those of another machine, and those that a program makes up.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

// Where the disk of that native path is mounted, by the path alone: nothing is asked of a disk.
// Empty for one of this machine's own.
std::string farDiskOf(const std::string& path);

// The same by what `/proc/self/mountinfo` reads.
std::string farDiskIn(std::string_view mounts, const std::string& path);

} // namespace larkspin
