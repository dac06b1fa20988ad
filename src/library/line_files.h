// Line files: one list row per line in UTF-8, each ended by carriage return and line feed; no
// header, no count. Playlists, notes and launcher items are kept in them.
#pragma once

#include "text/row_list.h"

#include <map>
#include <optional>
#include <string>

namespace larkspin {

struct AppState;
class Files;

// A text that is to be a row of such a list: line breaks in it become blanks.
std::string asOneLine(std::string text);

class LineFiles {
public:
    explicit LineFiles(Files& files) : files_(files) {}

    // Appends every line of the file to the list as it stands and gives the number of lines read.
    // A file that can't be read leaves the list as it was.
    int loadlines(const std::string& path, RowList& list);

    // Puts the rows over the file. A failure is not noticed; the file then keeps its old lines.
    //
    // The list of a file that couldn't be loaded lacks that file's lines, and holds only what has
    // come since. Until the file has been loaded, the rows are therefore put behind the lines that
    // it holds, or, while it still can't be read, behind those of a file beside it, whose name has
    // ".rescued" at its end. No rows at all change neither.
    void savelines(const std::string& path, const RowList& list);

    // Two files of which each line belongs to the same line of the other. When one of them can't be
    // read neither is loaded, so that new rows go behind the lines of both and the halves still
    // fit.
    struct Half {
        std::string path;
        RowList& list;
    };
    void loadTogether(const Half& first, const Half& second);

    // The playlist from a file, in place of what the lists hold.
    void loadPlaylist(const std::string& path, AppState& state);

private:
    std::string load(const std::string& path);
    void saveBehind(const std::string& path, const std::string& rows);

    Files& files_;
    // What couldn't be loaded, by path; with its lines where a save has come to them since, so
    // that one save after the other doesn't add the same rows again.
    std::map<std::string, std::optional<std::string>> unread_;
};

} // namespace larkspin
