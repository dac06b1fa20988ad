#include "library/refresh.h"

#include "chat/reply.h"
#include "library/listers.h"
#include "library/playlist.h"
#include "library/playlist_row.h"
#include "library/removing.h"
#include "library/scan.h"
#include "shell/app_state.h"
#include "shell/this_run.h"
#include "text/fold.h"

namespace larkspin {

int Refresh::refreshDirectories() {
    const int before = state_.masterList.count();
    RowList& directories = state_.knownDirs;
    collectdirs(state_);
    for (int index = directories.count() - 1; index >= 0; --index)
        if (directories.row(index).empty()) // of a row that names none
            directories.removeAt(index);
    clearPlaylist(state_); // so that there is no need of memory for the rows twice
    std::vector<Row> listed;
    listed.reserve(static_cast<std::size_t>(before));
    RowWriter writer;
    for (int index = 0; index < directories.count(); ++index) {
        File1_.setPath(std::string(directories.row(index)));
        heyaz(listed, writer);
    }
    replacePlaylist(state_, listed);
    showFileCountLabel(state_);
    return state_.masterList.count() - before;
}

// With the list full, the rest of the files is left out.
void Refresh::heyaz(std::vector<Row>& rows, RowWriter& writer) const {
    for (int index = 0; index < File1_.count() && rows.size() < RowList::limit; ++index)
        rows.push_back(writer.write(rowOfFile(File1_.name(index), File1_.path())));
}

void Refresh::ref(const std::string& text) {
    if (reply_.refusedInSilence("scanning"))
        return;
    if (state_.masterList.empty())
        reply_.saychat("nothin to refresh, bitch");
    collectdirs(state_);
    refreshmatching(state_.knownDirs, text);
    showfilecount(state_);
}

void Refresh::refreshmatching(RowList& list, const std::string& text) {
    const std::string wanted = foldCase(text);
    std::string matched;
    const ThisRun run(state_);
    const int last = list.count() - 1;
    for (int index = 0; index <= last; ++index) {
        const std::string_view folded = list.folded(index);
        if (folded.empty() || folded.find(wanted) == std::string_view::npos)
            continue;
        list.setCurrentIndex(index);
        matched = list.row(index);
        state_.scanRoot = matched;
        scan_.Command4_Click();
        if (!run.lasts())
            return;
    }
    File1_.refresh();
    // Events have run: with another root, scanRows are those of a scan that came in.
    if (matched.empty() || state_.scanRoot != matched)
        return;
    removematching(state_.playlistView, state_.masterList, matched);
    for (int index = 0; index < state_.scanRows.count(); ++index)
        addToPlaylistOnce(state_, state_.scanRows.share(index));
}

} // namespace larkspin
