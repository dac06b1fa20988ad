// Songs that are brought from outside, by the path of a file or a directory, into the playlist.
// A file must be of a type that can be played. A directory is taken whole: all that can be played
// of what is below it, whatever the media filter. A song whose file the list has already isn't
// added again, however its row spells the directory. An address is that of something elsewhere,
// since files of this machine are brought by their paths.
//
// Nothing is said here. Events are served.
#pragma once

#include "chat/core.h"
#include "library/unread_directories.h"
#include "text/row.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

class Files;
enum class Addition;

// What has come of bringing one path.
struct Brought {
    enum class Outcome { file, directory, unplayable, missing, elsewhere, unanswered };

    Outcome outcome = Outcome::missing;
    std::string path;
    int added = 0, there = 0, leftOut = 0; // songs: new, in the list before, without room
    int filtered = 0;                      // new ones that the media filter doesn't let through
    UnreadDirectories unread = {};         // below a directory, or the directory itself
    Row row = {};                          // of a file, if it is in the list now
};

class BroughtSongs {
public:
    BroughtSongs(const Core& core, Files& files, Directories& directories)
        : state_(core.state), loop_(core.loop), files_(files), directories_(directories) {}

    // Nothing when the run of the program has ended meanwhile.
    std::optional<Brought> bring(const std::string& path);

private:
    using IsOnDisk = std::function<bool(const Row& row)>;

    bool bringFile(Brought& brought);
    bool bringDirectory(Brought& brought);
    void addAll(const DirectoryListing& listing, Brought& brought);
    Row add(std::string_view fileName, const std::string& directory, const IsOnDisk& isOnDisk,
            Brought& brought);

    AppState& state_;
    EventLoop& loop_;
    Files& files_;
    Directories& directories_;
};

} // namespace larkspin
