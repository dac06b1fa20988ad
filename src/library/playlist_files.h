// The playlist files: line files in the data directory, which the tray's menu lists, and the one
// whose name the title of the media window bears.
//
// A text that is typed, or stands in the settings, may be no name of a file there: a path, dots
// alone, a name that the program keeps something else under. Nothing is read or written then.
#pragma once

#include "library/line_files.h"
#include "library/listers.h"
#include "shell/data_directory.h"
#include "shell/files.h"
#include "shell/settings.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

struct AppState;
class KeptFiles;

class PlaylistFiles {
public:
    PlaylistFiles(AppState& state, KeptFiles& files, LineFiles& lineFiles, FileLister& File1,
                  const DataDirectory& directory)
        : state_(state), files_(files), lineFiles_(lineFiles), File1_(File1),
          directory_(directory) {}

    // The files that there are, by name. File1 is left in the data directory under the pattern
    // that it had; where it can't enter the directory there are none.
    std::vector<std::string> names();

    bool exists(const std::string& name);
    FileChange remove(const std::string& name); // into the wastebasket

    // Loads the file in place of what the lists hold. They stay when it can't be read.
    Loaded load(const std::string& name) { return loadFrom(pathOf(name), name); }
    Loaded loadFrom(const std::string& path, const std::string& name);

    // Saves the lists into the file, which is the playlist in use from then on. A new file gets an
    // entry in the menu. When it can't be saved nothing changes.
    struct Saved {
        FileChange outcome;
        bool isNew = false;
    };
    Saved save(const std::string& name);

    // Makes the tray's entries anew.
    void fillplaylistmenu();

    // The name in the title of the media window; empty before there is one.
    void showName(std::string_view name);
    std::string shownName() const;

    // Load the list with which the last run ended, and keep the one with which this run ends. A
    // playlist that has a name is saved only when the owner says so. A list that differs from its
    // file, for whatever reason, is kept where a list without a name is.
    void loadOfLastRun(const StoredSettings& stored);
    void endRun(SettingsChanges& changes);

private:
    std::string pathOf(const std::string& name) const;
    FileChange whyNot(const std::string& name);
    FileChange mayBeSaved(const std::string& name);
    FileChange joinLackingRows();
    std::string leftOut(const std::string& path) const;
    void remember(SettingsChanges& changes, const std::string& key, const std::string& value);
    void loadUnnamed(LineFiles::Into into);
    void loadNamed(const std::string& name, const StoredSettings& stored);
    void tellLoad(const std::string& name, const Loaded& loaded);
    FileChange saveUnnamed(bool isNamed);
    void showCount();

    AppState& state_;
    KeptFiles& files_;
    LineFiles& lineFiles_;
    FileLister& File1_;
    const DataDirectory& directory_;
    std::string file_, loaded_;   // the file of the list in use; the one that its rows came from
    std::set<std::string> whole_; // files with the rows for which the list had no room
    // Whether rows of the last run are missing because a file couldn't be read: the file with the
    // name, or the one without.
    bool lacksNamed_ = false, lacksUnnamed_ = false;
    bool isPart_ = false;    // rows are missing, and the list hasn't been saved as it is
    bool isUnknown_ = false; // which list it should be, since the settings couldn't be read
    std::set<std::string> remembered_; // keys of settings that have a value
};

} // namespace larkspin
