// The one fixed directory in which everything that lasts is kept, and the names of the files
// in it. All paths are drive paths.
#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace larkspin {

class DataDirectory {
public:
    explicit DataDirectory(std::string path) : path_(std::move(path)) {}

    const std::string& path() const { return path_; } // without a trailing backslash

    std::string settingsFile() const { return file("larkspin.ini"); }
    std::string countsFile() const { return file("played.ini"); }
    std::string unnamedPlaylist() const { return file("temp.lst"); }
    std::string notesFile() const { return file("larkmain.lpb"); }
    std::string appPathsFile() const { return file("lksapp.lst"); }
    std::string appTitlesFile() const { return file("lksappl.lst"); }
    std::string historyFile() const { return file("history.txt"); }
    std::string ircFile() const { return file("irc.txt"); }
    std::string roomWindowFile() const { return file("room-window.txt"); }
    std::string file(std::string_view name) const { return path_ + '\\' + std::string(name); }

    // What such a file holds, as the owner calls it; empty for any other path.
    std::string_view contentsOf(std::string_view path) const;

    // Whether the path is that of a file of the program's own, however it is written, or of one
    // that stands in for such a file for a while. Playlists can't have their names.
    bool isOwnFile(std::string_view path) const;

private:
    std::string path_;
};

// Ends the name of the file beside another one, for what couldn't be written into that one.
inline constexpr std::string_view besideEnding = ".rescued";
// Ends the name of the file that holds the new contents of several others until all of these are
// written.
inline constexpr std::string_view aheadEnding = ".ahead";

} // namespace larkspin
