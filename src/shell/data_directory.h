// The one fixed directory in which everything that lasts is kept, and the names of the files
// in it. All paths are drive paths.
#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace larkspin {

// Also what the platform's own code opens by name.
namespace ownName {
inline constexpr std::string_view settings = "larkspin.ini";
inline constexpr std::string_view counts = "played.ini";
inline constexpr std::string_view unnamedPlaylist = "temp.lst";
inline constexpr std::string_view notes = "larkmain.lpb";
inline constexpr std::string_view appPaths = "lksapp.lst";
inline constexpr std::string_view appTitles = "lksappl.lst";
inline constexpr std::string_view history = "history.txt";
inline constexpr std::string_view irc = "irc.txt";
inline constexpr std::string_view ignored = "ignored.txt";
inline constexpr std::string_view roomWindow = "room-window.txt";
inline constexpr std::string_view crash = "crash.txt";
inline constexpr std::string_view lock = "larkspin.lock";
// How the names of half-written files begin. The next start removes what is left of them.
inline constexpr std::string_view unfinishedStart = ".larkspin-";
} // namespace ownName

class DataDirectory {
public:
    explicit DataDirectory(std::string path) : path_(std::move(path)) {}

    const std::string& path() const { return path_; } // without a trailing backslash

    std::string settingsFile() const { return file(ownName::settings); }
    std::string countsFile() const { return file(ownName::counts); }
    std::string unnamedPlaylist() const { return file(ownName::unnamedPlaylist); }
    std::string notesFile() const { return file(ownName::notes); }
    std::string appPathsFile() const { return file(ownName::appPaths); }
    std::string appTitlesFile() const { return file(ownName::appTitles); }
    std::string historyFile() const { return file(ownName::history); }
    std::string ircFile() const { return file(ownName::irc); }
    std::string ignoredFile() const { return file(ownName::ignored); }
    std::string crashFile() const { return file(ownName::crash); }
    std::string roomWindowFile() const { return file(ownName::roomWindow); }
    std::string logsDirectory() const { return file("logs"); } // with files of any names below it
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
