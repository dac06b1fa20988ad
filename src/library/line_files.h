// Line files: one list row per line in UTF-8, each ended by carriage return and line feed; no
// header, no count. Playlists and notes are kept in them.
//
// They may have been made by hand, or elsewhere: a byte order mark in front, any line ends and
// blank lines don't count, and what a playlist's lines can be is told in playlist_line.h.
#pragma once

#include "shell/files.h"
#include "text/row_list.h"

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

struct AppState;

// Calls for each line of the text, without its end.
void forEachLine(std::string_view text, const std::function<void(std::string_view)>& take);

std::string linesOf(const RowList& list);

// What came of a load.
struct Loaded {
    std::string reason = {}; // why the file couldn't be read; empty when it could
    int leftOut = 0;         // lines that the full list didn't take

    bool failed() const { return !reason.empty(); }
};

class LineFiles {
public:
    // The drive path for a path in the system's own notation.
    using ReadPath = std::function<std::string(std::string_view typed)>;

    explicit LineFiles(Files& files, ReadPath readPath = {})
        : files_(files), readPath_(std::move(readPath)) {}

    // Appends the lines of the file to the list as it stands. A file that can't be read leaves the
    // list as it was.
    //
    // Such a list lacks that file's lines, and holds only what comes after that. Until the file has
    // been loaded, the rows are therefore put after the lines that it holds, or, while it still
    // can't be read, into a file beside it, which is loaded with it from then on.
    Loaded loadlines(const std::string& path, RowList& list);

    // Replaces the file with the rows of the list, followed by the lines for which the list had no
    // room. Lines that somebody else has added to the file since it was loaded stay, after all
    // others. A file that only he has changed stays as it is.
    FileChange savelines(const std::string& path, const RowList& list) {
        return savelines(path, list, leftOut(path));
    }
    FileChange savelines(const std::string& path, const RowList& list, const std::string& more);

    // Loads a playlist from a file. `lists`: in place of what the lists hold; they stay as they are
    // when the file can't be read. `listsOfNewRun`: the same at a start, when there may be rows in
    // a file beside it that can be read. `listsAsTheyAre`: adds the rows that the lists don't hold
    // yet.
    enum class Into { lists, listsOfNewRun, listsAsTheyAre };
    Loaded loadPlaylist(const std::string& path, AppState& state, Into into = Into::lists);

    // Whether loading the file into an empty playlist would give this one.
    bool holdsPlaylist(const std::string& path, const RowList& list);

    // Replaces the file with the rows of the list and these lines, whatever it holds now. It must
    // not hold lines that the list lacks.
    FileChange replaceLines(const std::string& path, const RowList& list, const std::string& more);

    // The lines of the file that had no room in the list when it was loaded last.
    std::string leftOut(const std::string& path) const;

private:
    struct Kept {
        bool isUnread = false;  // the list lacks the lines of the file
        bool hasBeside = false; // there is a file beside it, to be removed by the next save
        std::string leftOut = {};
        // The lines of a file that could only be read at a save. They are kept, so that one save
        // after the other doesn't add the same rows again.
        std::optional<std::string> before = {};
        // Hashes of the file's lines as it was last read or written, and of what the list made of
        // it.
        std::optional<std::size_t> seen = {};
        std::size_t own = 0;
        std::vector<std::size_t> seenLines = {};
        std::string others = {}; // lines that somebody else has added since it was loaded
    };

    FileRead load(const std::string& path);
    void remember(Kept& kept, std::string_view file, std::string_view own);
    void rememberLoaded(Kept& kept, std::string_view file, const RowList& list);
    FileChange saveWithOthers(const std::string& path, Kept& kept, const std::string& lines);
    FileChange replaceWithBeside(const std::string& path, const std::string& lines);
    FileChange saveAfter(const std::string& path, const std::string& rows);

    Files& files_;
    ReadPath readPath_;
    std::map<std::string, Kept> kept_;
};

} // namespace larkspin
