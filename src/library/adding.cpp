#include "library/adding.h"

#include "chat/reply.h"
#include "library/directories.h"
#include "library/playlist.h"
#include "library/scan.h"
#include "shell/app_state.h"
#include "shell/dialogs.h"
#include "text/fold.h"

namespace larkspin {

void Adding::scan(const std::string& directory) {
    if (reply_.refusedInSilence("scanning"))
        return;
    const std::string root = directories_.drivePath(directory);
    reply_.saychat("scanning directory <b>" + root + "</b> for <b>" + state_.mediaFilter);
    state_.scanRoot = root;
    scan_.Command4_Click();
}

void Adding::listadd(const std::string& text) {
    if (reply_.refusedInSilence("scanning"))
        return;
    const int before = state_.masterList.count();
    addmatching(state_.scanRows, text);
    const int after = state_.masterList.count();
    showFileCountLabel(state_);
    reply_.saychat("added <b>" + std::to_string(after - before) + "</b> items for <b>" + text +
                   "</b> (<b>" + std::to_string(after) + "</b>)");
    showFileCountEntry(state_);
}

void Adding::transfer() {
    if (state_.scanRows.empty()) {
        reply_.saychat("there's nothing to transfer, you dumbass");
        return;
    }
    reply_.saychat("transferring <b>" + std::to_string(state_.scanRows.count()) +
                   "</b> files over to playlist");
    addScanned();
}

void Adding::addScanned() {
    for (int index = 0; index < state_.scanRows.count(); ++index)
        addToPlaylistOnce(state_, state_.scanRows.share(index));
    showfilecount(state_);
}

void Adding::scanAndOffer() {
    scan_.scanDrives();
    if (dialogs_.ask("found " + std::to_string(state_.scanRows.count()) + " mp3s in " +
                     std::to_string(state_.knownDirs.count()) +
                     " directories, would you like to transfer them? or use add string on the "
                     "mp3s window to add individual songs"))
        addScanned();
}

bool Adding::addmatching(RowList& list, const std::string& text) {
    const std::string wanted = foldCase(text);
    bool matched = false;
    for (int index = 0; index < list.count(); ++index) {
        if (list.folded(index).find(wanted) == std::string::npos)
            continue;
        matched = true;
        list.setCurrentIndex(index);
        addToPlaylistOnce(state_, list.share(index));
    }
    return matched;
}

void Adding::addString(const std::string& text) {
    addmatching(state_.scanRows, text);
    showfilecount(state_);
    state_.playedMemory.clear();
}

} // namespace larkspin
