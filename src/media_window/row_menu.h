// The menu of a row in the media window's list. Each entry works on the row that the menu was
// opened on, as long as it is on the list.
#pragma once

#include "chat/core.h"
#include "library/directories.h"
#include "shell/menu.h"
#include "text/row.h"

#include <functional>
#include <string>
#include <vector>

namespace larkspin {

class Desktop;
class MediaList;
class Removing;
class SongFiles;

class RowMenu {
public:
    // Shows a directory in whatever the desktop has for that; false when there is nothing.
    using OpenFolder = std::function<bool(const std::string& path)>;

    struct Works {
        MediaList& list;
        Removing& removing;
        SongFiles& songFiles;
        Directories& directories;
        OpenFolder openFolder;
    };

    RowMenu(const Core& core, Desktop& desktop, Works works)
        : state_(core.state), dialogs_(core.dialogs), desktop_(desktop), works_(std::move(works)) {}

    // Of the current row. With none there is no menu.
    void popUp();

private:
    std::vector<MenuEntry> entries(const Row& row);
    Task onRow(const Row& row, const Task& work);
    void showFolder(const std::string& path);

    AppState& state_;
    Dialogs& dialogs_;
    Desktop& desktop_;
    Works works_;
};

} // namespace larkspin
