// Scans: finding media files on disk. A scan walks a directory with its whole subtree, or
// every drive, and leaves what the media filter lets through in scanRows. No playlist changes.
//
// Events run at every file, so that a command can arrive in the middle of a scan; one that
// scans, lists or changes the filter itself then changes what this scan goes on with.
#pragma once

#include "library/directories.h"
#include "shell/pause.h"

#include <string>
#include <vector>

namespace larkspin {

struct AppState;
class EventLoop;
struct Listers;
class Reply;

class Scan {
public:
    Scan(AppState& state, Listers& listers, EventLoop& loop, Reply& reply)
        : state_(state), listers_(listers), loop_(loop), pause_(loop), reply_(reply) {}

    // The tree under scanRoot, from empty results, with an answer in the room.
    void Command4_Click();

    // The same without the answer, added to the results that are there.
    void Command4z();

    // Every drive of the machine, with answers and without.
    void scanpc();
    void scanDrives();

private:
    // What the walk has read, for the listing behind it: each directory is read once.
    struct ReadAhead {
        struct Visit {
            std::string queued;
            bool entered;
            DirectoryListing listing;
        };
        std::string pattern;       // the listings hold only what fits it
        std::vector<Visit> visits; // in the order of the queue
    };

    ReadAhead queueTree();
    ReadAhead walkdirs(const std::string& path);
    void listQueue(ReadAhead read);
    void enter(int queued, ReadAhead& read);
    void noteFile(const std::string& fileName, const std::string& directory);
    void clearResults();
    void scanRoots();
    void sayFound();

    AppState& state_;
    Listers& listers_;
    EventLoop& loop_;
    Pause pause_;
    Reply& reply_;
};

} // namespace larkspin
