// What is asked of the owner's disks, as it is put to a worker, and the worker's side of it.
#pragma once

#include "library/directories.h"
#include "outside/machine_facts.h"
#include "platform/posix/disk_worker.h"
#include "platform/posix/opened_file.h"
#include "platform/posix/posix_directories.h"
#include "platform/posix/posix_files.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace larkspin {

enum class DiskQuestion : std::uint8_t {
    list,
    presence,
    size,
    read,
    replace,
    append,
    rename,
    moveToWastebasket,
    drivePath,
    space,
    open,
};

// The question about a path, with the number or the text that some questions need.
std::string put(DiskQuestion question, std::string_view path, std::uint64_t number = 0,
                std::string_view text = {});

// A worker's way to answer all of them.
DiskWorker::Answer answersFrom(PosixFiles files, PosixDirectories directories);

// The answers; what has been cut short reads as a failure.
DirectoryRead directoryIn(std::string_view answer);
FileRead fileIn(std::string_view answer);
FileChange changeIn(std::string_view answer);
Files::Presence presenceIn(std::string_view answer);
std::uint64_t numberIn(std::string_view answer);
std::string textIn(std::string_view answer);
std::optional<DriveSpace> spaceIn(std::string_view answer);
OpenedFile openedFileIn(DiskAnswer answer);

} // namespace larkspin
