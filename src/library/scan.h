// Scans: finding media files on disk. A scan walks a directory with its whole subtree, or
// every drive, and leaves what the media filter lets through in scanRows. No playlist changes.
//
// Events run at every directory and every file, so that a command can arrive in the middle of a
// scan. Another scan clears the results, and both then add to them. A command that changes the
// filter changes what this scan lists from the next directory on. The walks stay apart. A scan
// ends with the run that it began in: the results of the next one hold nothing of it.
#pragma once

#include "library/listers.h"
#include "library/unread_directories.h"
#include "shell/pause.h"
#include "text/row.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace larkspin {

struct AppState;
class EventLoop;
class Reply;
class ThisRun;

class Scan {
public:
    Scan(AppState& state, Directories& directories, Listers& listers, EventLoop& loop, Reply& reply)
        : state_(state), directories_(directories), listers_(listers), loop_(loop), pause_(loop),
          reply_(reply) {}

    // The tree under scanRoot, from empty results, with an answer in the room.
    void Command4_Click();

    // The same for several trees together, but nothing is said of what couldn't be read. Each
    // directory that could be read is given to `take`, with the files that the filter lets through,
    // in order. False when the run has ended meanwhile.
    using Take = std::function<void(const DirectoryListing&)>;
    bool scanTrees(const std::vector<std::string>& roots, const Take& take);

    // One tree, from empty results, without a word. False when the run has ended meanwhile.
    bool scanTree(const std::string& root);

    // Every drive of the machine, with answers and without. False when the run has ended meanwhile.
    void scanpc();
    bool scanDrives();

    // Where a scan that the owner has asked for by a line or a menu looks now; nothing while none
    // is at work.
    std::optional<std::string> lookingIn() const;

    // What the last scan has to tell besides what it found, for a box: files that didn't fit,
    // directories that couldn't be read.
    std::string notes() const;

private:
    // Command4_Click without the answer, added to the results that are there.
    void Command4z(const ThisRun& run);

    void walkdirs(const std::string& root, const ThisRun& run, const Take& take);
    DirectoryRead readAlike(const std::string& path);
    void listFiles(const DirectoryListing& listing, const ThisRun& run);
    void noteFile(const std::string& fileName, const std::string& directory);
    void noteUnread(const std::string& directory, DirectoryRead::Outcome outcome, bool isRoot);
    void clearResults();
    void scanRoots(const ThisRun& run);
    void sayFound();
    void sayUnread();

    AppState& state_;
    Directories& directories_;
    Listers& listers_;
    EventLoop& loop_;
    Pause pause_;
    Reply& reply_;
    RowWriter rows_;           // of the files found
    int atWork_ = 0;           // scans, one in the other
    int leftOut_ = 0;          // files, since the results were cleared
    UnreadDirectories unread_; // since then
};

} // namespace larkspin
