// A song's file that is being opened. The owner's disk is asked for it without a wait; whether it
// has answered is looked for from time to time.
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

    // Begins to open the file of that native path, when an earlier one has been dropped. False when
    // its directory doesn't answer, or too many others don't.
    bool begin(const std::string& path);
    void drop() { // the file isn't wanted any more
        isWanted_ = false;
        opened_.reset();
    }
    void giveUp(); // the directory counts as one that doesn't answer
    bool isUnderWay() const { return isWanted_; }
    bool leavesNothing(); // whether all has been answered, or given up

    // The outcome, once. Waits for it, but no longer than `patience`.
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

    // About the wanted file.
    std::string directory_, question_;
    int tries_ = 0;
    std::optional<OpenedFile> opened_;
};

} // namespace larkspin
