// The works over the whole playlist.
#include "app/program.h"
#include "library/line_files.h"
#include "library/playlist.h"
#include "library/playlist_row.h"
#include "made_music.h"
#include "platform/posix/drive_paths.h"
#include "support/virtual_machine.h"
#include "works.h"

#include <malloc.h>

namespace larkspin {

namespace {

int sizeOf(const benchmark::State& state) {
    return static_cast<int>(state.range(0));
}

// Gives freed memory back to the system, so that every round takes it anew, as a program that
// has just started does, whatever the sizes before it.
void forgetMemory() {
    ::malloc_trim(0);
}

void fillPlaylist(AppState& state, const std::vector<Row>& rows) {
    clearPlaylist(state);
    for (const Row& row : rows)
        addToPlaylist(state, row);
}

void load(benchmark::State& state, const RowList& lines) {
    const TempDirectory disk;
    PosixFiles files;
    const std::string path = drivePath((disk.path() / "temp.lst").native());
    LineFiles lineFiles(files);
    lineFiles.savelines(path, lines);
    AppState app;
    for (auto _ : state) {
        clearPlaylist(app);
        forgetMemory();
        timed(state, [&] { lineFiles.loadPlaylist(path, app); });
        if (app.playlistView.count() != lines.count())
            state.SkipWithError("rows lost");
    }
}

void search(benchmark::State& state, std::string_view text, int hits) {
    AppState app;
    fillPlaylist(app, scannedRows(sizeOf(state)));
    for (auto _ : state) {
        timed(state, [&] { searchrows(app, app.masterList, text); });
        if (app.choiceList.count() != hits)
            state.SkipWithError("wrong hits");
    }
}

void transfer(benchmark::State& state, bool isThereAlready) {
    VirtualMachine machine;
    machine.start();
    AppState& app = machine.state();
    for (const Row& row : scannedRows(sizeOf(state)))
        app.scanRows.add(row);
    const ChatLine line{machine.room.screenName, "'transfer"};
    if (isThereAlready)
        machine.lines.heard(line);
    for (auto _ : state) {
        if (!isThereAlready)
            clearPlaylist(app);
        forgetMemory();
        timed(state, [&] { machine.lines.heard(line); });
        machine.forget();
        if (app.masterList.count() != sizeOf(state))
            state.SkipWithError("rows lost");
    }
}

void collect(benchmark::State& state) {
    AppState app;
    fillPlaylist(app, scannedRows(sizeOf(state)));
    for (auto _ : state) {
        timed(state, [&] { collectdirs(app); });
        if (app.knownDirs.count() != directoriesFor(sizeOf(state)))
            state.SkipWithError("directories lost");
    }
}

// All rows but one are remembered, in the order of random picks, on a list as loaded at start.
void pick(benchmark::State& state) {
    VirtualMachine machine;
    machine.files.makeDirectory(machine.drive("data"));
    LineFiles(machine.files)
        .savelines(machine.drive("data/temp.lst"), savedOrder(scannedRows(sizeOf(state))));
    machine.start();
    AppState& app = machine.state();
    if (app.masterList.count() != sizeOf(state))
        state.SkipWithError("rows lost");
    std::vector<Row> titles;
    for (int index : shuffledIndexes(app.masterList.count()))
        titles.push_back(Row(songOfRow(app.masterList.row(index)).title()));
    for (auto _ : state) {
        machine.program->shell.settings.put("play", "Artist 01 - Some Title");
        app.playedMemory.clear();
        app.playedMemory.contains(""); // from here on it knows what it holds
        for (std::size_t index = 1; index < titles.size(); ++index)
            app.playedMemory.add(titles[index]);
        timed(state, [&] { machine.program->playback.randomPick.randompick([] { return true; }); });
        if (app.choiceList.row(0) != titles[0].text())
            state.SkipWithError("wrong pick");
    }
}

// What the pick writes to disk in each of its rounds, for comparison.
void writeSetting(benchmark::State& state) {
    VirtualMachine machine;
    machine.start();
    bool odd = false;
    for (auto _ : state)
        machine.program->shell.settings.put("play", (odd = !odd) ? "1" : "0");
}

} // namespace

void addListWorks() {
    addSizedWork("load a playlist into both lists", 0.060, [](benchmark::State& state) {
        load(state, savedOrder(scannedRows(sizeOf(state))));
    });
    addSizedWork("load a playlist in no order", noBudget, [](benchmark::State& state) {
        load(state, shuffledOrder(scannedRows(sizeOf(state))));
    });
    addSizedWork("play *: search with 10 hits", 0.004,
                 [](benchmark::State& state) { search(state, "TITLE 00012", 10); });
    addSizedWork("play *: search without a hit", 0.004,
                 [](benchmark::State& state) { search(state, "title of no song", 0); });
    addSizedWork("transfer of new rows", 0.100,
                 [](benchmark::State& state) { transfer(state, false); });
    addSizedWork("transfer of rows that are there", 0.050,
                 [](benchmark::State& state) { transfer(state, true); });
    addSizedWork("collectdirs", 0.025, collect);
    addSizedWork("random pick, all rows but one remembered", 0.005, pick);
    addWork("a setting written to disk", noBudget, writeSetting)->UseRealTime();
}

} // namespace larkspin
