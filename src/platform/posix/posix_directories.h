// The directories port on a POSIX system: one drive, `c:`, which is the root directory.
//
// Links to directories are listed by themselves, so that a walk can't run in circles; links to
// files are files. From the root, a walk doesn't enter the directories that the system makes up.
#pragma once

#include "library/directories.h"

namespace larkspin {

class PosixDirectories : public Directories {
public:
    PosixDirectories(); // with the user's own home directory
    explicit PosixDirectories(std::string home) : home_(std::move(home)) {}

    DirectoryRead list(const std::string& path) override;
    std::vector<std::string> drives() override;
    std::string drivePath(std::string_view typed) override;

    // The native path of what the owner typed, as the system takes it; empty for a text that is no
    // path. Asks nothing of the disk.
    std::string nativeAsTyped(std::string_view typed) const;

private:
    std::string home_; // native
};

} // namespace larkspin
