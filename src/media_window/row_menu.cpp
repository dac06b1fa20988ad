#include "media_window/row_menu.h"

#include "library/playlist_row.h"
#include "library/removing.h"
#include "media_window/media_list.h"
#include "playback/song_files.h"
#include "shell/app_state.h"
#include "shell/desktop.h"
#include "shell/dialogs.h"
#include "shell/files.h"
#include "text/number.h"

namespace larkspin {

void RowMenu::popUp() {
    const RowList& rows = state_.playlistView;
    if (rows.currentIndex() < 0)
        return;
    desktop_.popUp({.name = "rowz", .entries = [this, row = rows.share(rows.currentIndex())] {
                        return entries(row);
                    }});
    works_.list.tellSize(); // which asks the disk, so the menu comes first
}

std::vector<MenuEntry> RowMenu::entries(const Row& row) {
    const int selected = state_.playlistView.selectedCount();
    const auto entry = [&](const char* name, std::string caption, const Task& work) {
        return MenuEntry{.name = name, .caption = std::move(caption), .action = onRow(row, work)};
    };
    return {
        entry("playrow", "play", [this] { works_.list.startClicked(); }),
        separator("r"),
        entry("renrow", "rename", [this] { works_.songFiles.renameShown(); }),
        entry("delrow", "delete", [this] { works_.songFiles.deleteShown(); }),
        entry("remrow", selected > 1 ? "remove " + counted(selected, "row") : "remove",
              [this] { works_.removing.removeSelected(); }),
        separator("s"),
        entry("folrow", "show folder",
              [this, row] { showFolder(std::string(plainDirectory(rowdir(row.text())))); }),
    };
}

// While the menu is open the list may change, and with it the current row.
Task RowMenu::onRow(const Row& row, const Task& work) {
    return [this, row, work] {
        RowList& rows = state_.playlistView;
        const int index = rows.find(row);
        if (index < 0)
            return;
        if (rows.isSelected(index))
            rows.setCurrentIndex(index);
        else
            rows.choose(index);
        work();
    };
}

// The desktop doesn't tell what has become of it, so what can be known is found out before.
void RowMenu::showFolder(const std::string& path) {
    const auto outcome = works_.directories.list(path).outcome;
    const char* failure = nullptr;
    if (outcome == DirectoryRead::Outcome::missing)
        failure = "there is no such directory";
    else if (outcome == DirectoryRead::Outcome::unanswered)
        failure = noAnswer;
    else if (!works_.openFolder(path))
        failure = "nothing here shows directories";
    if (failure)
        dialogs_.box("couldn't open " + path + ":  " + failure);
}

} // namespace larkspin
