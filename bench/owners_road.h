// The road that the program takes to its owner's disks: workers are asked, and the waits for them
// are served by a loop.
#pragma once

#include "platform/posix/asked_directories.h"
#include "platform/posix/disk_questions.h"
#include "platform/posix/poll_loop.h"

namespace larkspin {

struct OwnersRoad {
    OwnersRoad() { disk.serve(loop); }

    OwnersDisk disk{answersFrom(PosixFiles(), PosixDirectories())};
    PollLoop loop;
    AskedDirectories directories{disk, PosixDirectories(), ""};
};

} // namespace larkspin
