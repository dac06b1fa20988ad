// The playlist files: line files in the data directory, which the tray's menu lists, and the one
// whose name the title of the media window bears.
//
// A text can be typed, or stand in the settings, that is no file's name there: a path, a drive,
// dots alone, a name that the program keeps something else under. It is taken for the name of a
// file that can be neither read nor written, so that nothing outside the playlists is touched.
#pragma once

#include "library/listers.h"
#include "shell/data_directory.h"
#include "shell/files.h"
#include "shell/settings.h"

#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

struct AppState;
class LineFiles;

class PlaylistFiles {
public:
    PlaylistFiles(AppState& state, Files& files, LineFiles& lineFiles, FileLister& File1,
                  const DataDirectory& directory)
        : state_(state), files_(files), lineFiles_(lineFiles), File1_(File1),
          directory_(directory) {}

    // The files that there are, by name. File1 is left in the data directory under the pattern
    // that it had; where it can't enter the directory there are none.
    std::vector<std::string> names();

    bool exists(const std::string& name);
    FileChange remove(const std::string& name); // for good

    // The file in place of what the lists hold. One that can't be read is taken for empty.
    void load(const std::string& name) { loadFrom(pathOf(name), name); }
    void loadFrom(const std::string& path, const std::string& name);

    // The lists into the file, which is the playlist in use from then on. A failure isn't noticed.
    // True when there was no such file before: it gets an entry on the menu.
    bool save(const std::string& name);

    // The tray's entries, made anew.
    void fillplaylistmenu();

    // The name in the title of the media window; empty before there is one.
    void showName(std::string_view name);
    std::string shownName() const;

    // The playlist with which the last run ended, and the end of this one: a playlist that has a
    // name is saved only when the owner says so, and its name is remembered.
    void loadOfLastRun(const StoredSettings& stored);
    void endRun(SettingsChanges& changes);

private:
    std::string pathOf(const std::string& name) const;
    void showCount();

    AppState& state_;
    Files& files_;
    LineFiles& lineFiles_;
    FileLister& File1_;
    const DataDirectory& directory_;
};

} // namespace larkspin
