// Scans: finding media files on disk. A scan walks a directory with its whole subtree, or
// every drive, and leaves what the media filter lets through in scanRows. No playlist changes.
//
// Events run at every directory and every file, so that a command can arrive in the middle of a
// scan. One that scans clears the results, which this scan goes on adding to; one that changes the
// filter changes what this scan lists from the next directory on. The walks stay apart. A scan
// ends with the run that it began in: the results of the next one hold nothing of it.
#pragma once

#include "library/listers.h"
#include "shell/pause.h"
#include "text/row.h"

#include <string>
#include <vector>

namespace larkspin {

struct AppState;
class EventLoop;
class Reply;
class ThisRun;

class Scan {
public:
    Scan(AppState& state, Listers& listers, EventLoop& loop, Reply& reply)
        : state_(state), listers_(listers), loop_(loop), pause_(loop), reply_(reply) {}

    // The tree under scanRoot, from empty results, with an answer in the room.
    void Command4_Click();

    // Every drive of the machine, with answers and without. False when the run has ended meanwhile.
    void scanpc();
    bool scanDrives();

private:
    // What a walk has read, for the listing behind it: each directory is read once. Another walk
    // may run inside this one, so that each has its own.
    struct Visit {
        std::string directory;
        std::string pattern;       // the listing holds only what fits it
        FileLister::Shown listing; // none when it can't be entered
    };
    using Walk = std::vector<Visit>;

    // Command4_Click without the answer, added to the results that are there.
    void Command4z(const ThisRun& run);

    Walk queueTree(const ThisRun& run);
    Walk walkdirs(std::string directory, const ThisRun& run);
    void listFiles(const Walk& walk, const ThisRun& run);
    bool enter(const Visit& visit);
    void noteFile(const std::string& fileName, const std::string& directory);
    void clearResults();
    void scanRoots(const ThisRun& run);
    void sayFound();

    AppState& state_;
    Listers& listers_;
    EventLoop& loop_;
    Pause pause_;
    Reply& reply_;
    RowWriter rows_; // of the files found
};

} // namespace larkspin
