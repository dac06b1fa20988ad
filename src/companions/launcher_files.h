// The launcher's two files: one has the path of an item, line by line, and the other its title.
//
// A third file, with paths and titles in turn, is written ahead of the two and stays until both are
// written: a save that was broken off between them is read from there.
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

    // If one file is shorter than the other, it is filled up with empty texts. If one of the files
    // can't be read, neither is. The items of that run are then saved after those of the files, or,
    // as long as the files still can't be read, into a file beside them, which is loaded with them
    // from then on.
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
        titleLines_;                         // what the two files hold, if they are there
    std::optional<LauncherItemList> before_; // the items of files that could only be read at a save
};

} // namespace larkspin
