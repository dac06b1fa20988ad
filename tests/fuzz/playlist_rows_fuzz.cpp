// Rows are built, damaged and taken apart, and a list of them is searched.
#include "fuzz/fuzz.h"
#include "library/playlist.h"
#include "library/playlist_row.h"
#include "shell/app_state.h"
#include "text/fold.h"
#include "text/utf8.h"

#include <vector>

using namespace larkspin;

static std::string rebuilt(std::string_view row) {
    return makerow(rowname(row), rowext(row), rowdir(row));
}

static std::string rowOfAnyFile(const std::string& file, const std::string& directory) {
    const Song song = songOfFile(file, directory);
    const std::string row = rowOfFile(file, directory);
    demand(song.title() == file && row == makerow(song.name, song.extension, directory));
    if (file.find_first_of("{|") == file.npos && !withoutLast(file, 3).empty()) {
        demand(isWellFormed(row) && rowdir(row) == directory);
        demand(rowname(row) == song.name && rowext(row) == song.extension);
        demand(rowpath(row) == joinPath(directory, file));
    }
    return row;
}

static void search(AppState& state, const std::string& text) {
    const RowList& list = state.masterList;
    std::vector<std::string> found;
    int last = -1;
    for (int index = 0; index < list.count(); ++index) {
        demand(list.row(index) == state.playlistView.row(index));
        if (foldCase(rowname(list.row(index))).find(foldCase(text)) != std::string::npos) {
            found.push_back(rebuilt(list.row(index)));
            last = index;
        }
    }
    demand(searchrows(state, state.masterList, text) == !found.empty());
    demand(state.masterIndex() == last);
    demand(state.choiceList.count() == static_cast<int>(found.size()));
    for (int index = 0; index < state.choiceList.count(); ++index)
        demand(state.choiceList.row(index) == found[static_cast<std::size_t>(index)]);
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
    return 0;
}
