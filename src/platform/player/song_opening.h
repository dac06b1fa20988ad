// A song's file on its way to being open. The owner's disk is asked for it, and nobody waits: what
// came of it is looked for from time to time.
#pragma once

#include "platform/posix/opened_file.h"
#include "platform/posix/owners_disk.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace larkspin {

class SongOpening {
public:
    explicit SongOpening(OwnersDisk& disk) : disk_(disk) {}
    SongOpening(const SongOpening&) = delete;
    SongOpening& operator=(const SongOpening&) = delete;

    // Of that native path. The one before isn't wanted any more. False when its directory, or too
    // many others, don't answer.
    bool begin(const std::string& path);
    void drop() { isWanted_ = false; }
    void giveUp(); // the directory counts as one that doesn't answer
    bool isUnderWay() const { return isWanted_; }
    bool leavesNothing(); // whether all has been answered, or given up

    // What came of it, once: waits for it as long.
    std::optional<OpenedFile> result(std::chrono::milliseconds patience);

private:
    // A worker that opens files of one directory, one after the other, also those that nobody
    // wants any more.
    struct Asked {
        std::unique_ptr<DiskWorker> worker;
        std::string directory;
        Nanoseconds since; // its last answer
        int unanswered = 0;
    };

    Asked* wantedOne();
    void ask();
    void hear();
    bool isDone(Asked& asked);

    OwnersDisk& disk_;
    std::vector<Asked> asked_;
    bool isWanted_ = false;

    // Of the wanted one.
    std::string directory_, question_;
    int tries_ = 0;
    std::optional<OpenedFile> opened_;
};

} // namespace larkspin
