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
    std::string file(std::string_view name) const { return path_ + '\\' + std::string(name); }

private:
    std::string path_;
};

} // namespace larkspin
