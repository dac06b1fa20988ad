// The two files of the launcher: line by line, one holds an item's path and the other its title.
//
// A file of its own goes ahead of them with both, in turn, and stays until both are written: a save
// that was broken off between them, for whatever reason, is read from there.
#pragma once

#include "shell/data_directory.h"

#include <optional>
#include <string>
#include <vector>

namespace larkspin {

class KeptFiles;
struct FileChange;

struct LauncherItem {
    std::string path, title;
};
using LauncherItemList = std::vector<LauncherItem>;

class LauncherFiles {
public:
    LauncherFiles(KeptFiles& files, const DataDirectory& directory)
        : files_(files), paths_(directory.appPathsFile()), titles_(directory.appTitlesFile()),
          ahead_(paths_ + std::string(aheadEnding)), beside_(paths_ + std::string(besideEnding)) {}

    // Of files that differ in length the shorter one is filled up with empty texts. When one can't
    // be read neither is; the items that come then are saved after theirs, or, while that still
    // can't be done, into a file beside them, which is loaded with them from then on.
    LauncherItemList load();
    void save(LauncherItemList items);

private:
    std::optional<LauncherItemList> read();
    void write(const LauncherItemList& items);
    bool saveBoth(const std::string& paths, const std::string& titles,
                  const std::string& itemsInTurn);

    KeptFiles& files_;
    std::string paths_, titles_, ahead_, beside_;
    bool isUnread_ = false, hasAhead_ = false, hasBeside_ = false;
    std::optional<std::string> pathLines_,
        titleLines_;                         // that the two files hold, if they are there
    std::optional<LauncherItemList> before_; // of files that could be read at a later save
};

} // namespace larkspin
