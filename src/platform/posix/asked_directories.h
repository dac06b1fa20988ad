// The directories port of a program that can't hang: the data directory is listed at once, all
// others by the workers of the owner's disk.
#pragma once

#include "platform/posix/owners_disk.h"
#include "platform/posix/posix_directories.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace larkspin {

class AskedDirectories : public Directories {
public:
    AskedDirectories(OwnersDisk& disk, PosixDirectories directories, std::string dataDirectory)
        : disk_(disk), directories_(std::move(directories)), own_(std::move(dataDirectory)) {}

    DirectoryRead list(const std::string& path) override;
    std::unique_ptr<DirectoryReader> reader() override;
    std::vector<std::string> drives() override { return directories_.drives(); }
    std::string drivePath(std::string_view typed) override;

private:
    OwnersDisk& disk_;
    PosixDirectories directories_;
    std::string own_; // a drive path
};

} // namespace larkspin
