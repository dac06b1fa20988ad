// Rows are built, damaged and taken apart, and a list of them is searched.
#include "fuzz/fuzz.h"
#include "library/playlist.h"
#include "library/playlist_row.h"
#include "shell/app_state.h"
#include "text/fold.h"
#include "text/utf8.h"

#include <set>

using namespace larkspin;

static std::string rebuilt(std::string_view row) {
    return makerow(rowname(row), rowext(row), rowdir(row));
}

static std::string rowOfAnyFile(const std::string& file, const std::string& directory) {
    const Song song = songOfFile(file, directory);
    const std::string row = rowOfFile(file, directory);
    demand(song.title() == file && row == makerow(song.name, song.extension, directory));
    if (file.find('|') == file.npos && !withoutLast(file, 3).empty()) {
        demand(isWellFormed(row) && rowdir(row) == directory);
        demand(rowname(row) == song.name && rowext(row) == song.extension);
        demand(rowpath(row) == joinPath(directory, file));
    }
    return row;
}

static void search(AppState& state, const std::string& text) {
    const bool found = searchrows(state, state.masterList, text);
    int hits = 0, last = -1;
    for (int index = 0; index < state.masterList.count(); ++index) {
        const std::string_view row = state.masterList.row(index);
        demand(row == state.playlistView.row(index));
        if (foldCase(rowname(row)).find(foldName(text)) == std::string::npos)
            continue;
        demand(state.choiceList.row(hits++) == rebuilt(row));
        last = index;
    }
    demand(found == (hits > 0) && state.choiceList.count() == hits && state.masterIndex() == last);
}

static std::string plain(std::string_view directory) {
    return std::string(plainDirectory(foldCase(directory)));
}

// Every directory stands in the list, and none twice, however it is spelled.
static void collect(AppState& state) {
    collectdirs(state);
    std::set<std::string> directories;
    int empty = 0;
    for (int index = 0; index < state.masterList.count(); ++index) {
        const std::string directory = plain(rowdir(state.masterList.row(index)));
        empty += directory.empty();
        directories.insert(directory);
    }
    const int named = static_cast<int>(directories.size()) - (empty > 0 ? 1 : 0);
    demand(state.knownDirs.count() == named + empty);
    for (int index = 0; index < state.knownDirs.count(); ++index)
        demand(directories.contains(plain(state.knownDirs.row(index))));
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const std::string text = input.ConsumeRandomLengthString(4);
    AppState state;
    while (input.remaining_bytes() > 0) {
        const std::string file = input.ConsumeRandomLengthString(30);
        std::string row = rowOfAnyFile(file, input.ConsumeRandomLengthString(20));
        if (input.ConsumeBool())
            row.replace(input.ConsumeIntegralInRange<std::size_t>(0, row.size()),
                        input.ConsumeIntegralInRange<std::size_t>(0, 100),
                        input.ConsumeRandomLengthString(10));
        demand(isWellFormed(row) == (rebuilt(row) == row));
        addToPlaylist(state, Row(row));
    }
    search(state, text);
    collect(state);
    return 0;
}
