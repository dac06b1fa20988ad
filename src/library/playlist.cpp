#include "library/playlist.h"

#include "library/playlist_row.h"
#include "shell/app_state.h"
#include "text/fold.h"

#include <algorithm>
#include <cassert>
#include <unordered_set>
#include <vector>

namespace larkspin {

namespace {

// Most rows are ruled out by a look at the bytes that the name can take, and needn't be taken
// apart.
bool nameContains(const Row& row, std::string_view folded) {
    return row.folded().substr(0, longestName(row.bar())).find(folded) != std::string_view::npos &&
           rowname(row.folded()).find(folded) != std::string_view::npos;
}

std::string_view foldedDirectory(const Row& row) {
    const std::string_view folded = row.folded();
    return plainDirectory(folded.substr(std::min(row.bar() + 2, folded.size())));
}

// The directory as the row spells it, but without the two backslashes that renaming in older
// versions has put after it.
std::string_view tidyDirectory(std::string_view directory) {
    return directory.ends_with("\\\\") ? plainDirectory(directory) : directory;
}

// A row's number means the same one in both lists.
void expectInStep([[maybe_unused]] const AppState& state) {
    assert(state.masterList.count() == state.playlistView.count());
}

} // namespace

bool addToPlaylist(AppState& state, const Row& row) {
    const bool isAdded = state.masterList.add(row) && state.playlistView.add(row);
    expectInStep(state);
    return isAdded;
}

Addition addToPlaylistOnce(AppState& state, const Row& row, const IsOnDisk& isOnDisk) {
    const std::vector<Row> alike = state.masterList.equals(row);
    const auto isTheSame = [&](const Row& other) {
        return other.text() == row.text() || !isOnDisk(other);
    };
    if (std::ranges::any_of(alike, isTheSame))
        return Addition::thereAlready;
    return addToPlaylist(state, row) ? Addition::added : Addition::leftOut;
}

bool holdsRow(const RowList& list, const Row& row) {
    return std::ranges::any_of(list.equals(row),
                               [&](const Row& other) { return other.text() == row.text(); });
}

std::string leftOutText(int count, const std::string& mark, const std::string& unmark) {
    return "a list holds " + mark + std::to_string(RowList::limit) + unmark + " songs, left out " +
           mark + std::to_string(count) + unmark;
}

void removeFromPlaylist(AppState& state, int index) {
    state.playlistView.removeAt(index);
    state.masterList.removeAt(index);
    expectInStep(state);
}

void clearPlaylist(AppState& state) {
    state.masterList.clear();
    state.playlistView.clear();
}

int findRow(const RowList& list, const Row& row, int index) {
    const std::string_view text = row.text();
    if (text.empty())
        return -1;
    if (list.row(index) == text)
        return index;
    int found = list.count() - 1;
    while (found >= 0 && list.row(found) != text)
        --found;
    return found;
}

void showfilecount(AppState& state) {
    state.fileCountLabel = std::to_string(state.masterList.count()) + " files";
    state.mp3z = "view " + state.fileCountLabel;
}

bool isinlist(const RowList& list, std::string_view text) {
    return !text.empty() && list.contains(text);
}

bool searchrows(AppState& state, RowList& list, std::string_view text) {
    state.choiceList.clear();
    const std::string wanted = foldName(text);
    for (int index = 0; index < list.count(); ++index) {
        const Row& row = list.share(index);
        if (!nameContains(row, wanted))
            continue;
        list.setCurrentIndex(index);
        const std::string_view line = row.text();
        // Choices are taken apart as rows later on, so a row in another form is brought into that
        // of rows.
        if (isWellFormed(line))
            state.choiceList.add(row);
        else
            state.choiceList.add(makerow(rowname(line), rowext(line), rowdir(line)));
    }
    return !state.choiceList.empty();
}

void collectdirs(AppState& state) {
    state.knownDirs.clear();
    std::unordered_set<std::string_view> known;
    std::string_view last;
    for (int index = 0; index < state.masterList.count(); ++index) {
        const std::string_view folded = foldedDirectory(state.masterList.share(index));
        if (!folded.empty() && folded == last)
            continue; // most songs lie where the one before them did
        last = folded;
        if (folded.empty() || known.insert(folded).second)
            state.knownDirs.add(tidyDirectory(rowdir(state.masterList.row(index))));
    }
    state.setMasterIndex(state.masterList.count() - 1);
}

} // namespace larkspin
