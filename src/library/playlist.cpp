#include "library/playlist.h"

#include "library/playlist_row.h"
#include "shell/app_state.h"
#include "text/fold.h"

namespace larkspin {

bool addToPlaylist(AppState& state, const Row& row) {
    return state.masterList.add(row) && state.playlistView.add(row);
}

bool addToPlaylistOnce(AppState& state, const Row& row) {
    return !row.text().empty() && !state.masterList.contains(row) && addToPlaylist(state, row);
}

void clearPlaylist(AppState& state) {
    state.masterList.clear();
    state.playlistView.clear();
}

void showFileCountLabel(AppState& state) {
    state.fileCountLabel = std::to_string(state.masterList.count()) + " files";
}

void showFileCountEntry(AppState& state) {
    state.mp3z = "view " + std::to_string(state.masterList.count()) + " files";
}

void showfilecount(AppState& state) {
    showFileCountLabel(state);
    showFileCountEntry(state);
}

bool isinlist(const RowList& list, std::string_view text) {
    return !text.empty() && list.contains(text);
}

bool searchrows(AppState& state, RowList& list, std::string_view text) {
    state.choiceList.clear();
    const std::string wanted = foldCase(text);
    for (int index = 0; index < list.count(); ++index) {
        // Most rows don't hold the text anywhere, and needn't be taken apart.
        const std::string_view folded = list.folded(index);
        if (folded.find(wanted) == std::string_view::npos ||
            rowname(folded).find(wanted) == std::string_view::npos)
            continue;
        list.setCurrentIndex(index);
        const std::string_view row = list.row(index);
        if (isWellFormed(row))
            state.choiceList.add(list.share(index));
        else
            state.choiceList.add(makerow(rowname(row), rowext(row), rowdir(row)));
    }
    return !state.choiceList.empty();
}

void collectdirs(AppState& state) {
    state.knownDirs.clear();
    for (int index = 0; index < state.masterList.count(); ++index) {
        const std::string_view folded = rowdir(state.masterList.folded(index));
        if (folded.empty() || !state.knownDirs.containsFolded(folded))
            state.knownDirs.add(rowdir(state.masterList.row(index)));
    }
    state.setMasterIndex(state.masterList.count() - 1);
}

} // namespace larkspin
