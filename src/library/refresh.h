// Refresh: brings the playlist back in line with the disk, not by a look at each row, but by
// listing the directories that the rows came from again. What came into these comes into the list;
// what has gone from them goes, and so does what the media filter doesn't let through. The rows of
// a directory that can't be listed stay, and the owner is told.
//
// Events run meanwhile, and the lists stay as they are until everything is listed: a song can end
// and the next one start, rows can come and go. What has gone meanwhile stays gone.
#pragma once

#include "chat/core.h"
#include "library/unread_directories.h"
#include "text/row_list.h"

#include <optional>
#include <string>
#include <vector>

namespace larkspin {

class FileLister;
class Scan;

// What came of a refresh.
struct Refreshed {
    int grown = 0;            // by how many rows the playlist has
    UnreadDirectories unread; // their rows are still there
    int kept = 0;             // rows of those directories
    int leftOut = 0;          // files for which there was no room

    // What there is to tell beside the number, as it is said in the room or shown in a box.
    std::vector<std::string> notes(const std::string& mark = "<b>",
                                   const std::string& unmark = "</b>") const;
};

class Refresh {
public:
    Refresh(const Core& core, Directories& directories, FileLister& File1, Scan& scan)
        : state_(core.state), loop_(core.loop), reply_(core.reply), directories_(directories),
          File1_(File1), scan_(scan) {}

    // Refreshes every directory of the playlist, without their subdirectories. Nothing when the run
    // of the program has ended meanwhile.
    std::optional<Refreshed> refreshDirectories();

    // The command: refreshes the directories whose path contains the text, with their
    // subdirectories.
    void ref(const std::string& text);

    // Whether a refresh is at work. If one is, the owner is told, since there is only one at a
    // time.
    bool isAtWork();

    void say(const Refreshed& refreshed);

private:
    class AtWork;
    struct Listed;

    void refreshmatching(const std::string& text);
    bool list(const std::vector<std::string>& paths, Listed& listed, Refreshed& refreshed);
    void heyaz(const DirectoryListing& listing, Listed& listed) const;
    void bringInLine(const RowList& before, const Listed& listed, Refreshed& refreshed);

    AppState& state_;
    EventLoop& loop_;
    Reply& reply_;
    Directories& directories_;
    FileLister& File1_;
    Scan& scan_;
    std::optional<unsigned> runAtWork_; // the run in which a refresh is at work
};

} // namespace larkspin
