// The works over the whole playlist.
#include "app/program.h"
#include "library/line_files.h"
#include "library/playlist.h"
#include "library/playlist_row.h"
#include "library/removing.h"
#include "made_music.h"
#include "platform/posix/drive_paths.h"
#include "platform/posix/poll_loop.h"
#include "platform/posix/posix_files.h"
#include "shell/app_state.h"
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

// The rows by name, every other one with another extension.
std::vector<Row> mixedRows(int rows) {
    const RowList songs = savedOrder(scannedRows(rows));
    std::vector<Row> mixed;
    for (int index = 0; index < songs.count(); ++index) {
        const std::string_view row = songs.row(index);
        mixed.push_back(Row(makerow(rowname(row), index % 2 ? ".wav" : ".mp3", rowdir(row))));
    }
    return mixed;
}

void fillByTransfer(AppState& app, int rows) {
    fillPlaylist(app, scannedRows(rows));
}

void fillFromFile(AppState& app, int rows) {
    const TempDirectory disk;
    PosixFiles files;
    const std::string path = drivePath((disk.path() / "temp.lst").native());
    LineFiles lineFiles(files);
    lineFiles.savelines(path, savedOrder(scannedRows(rows)));
    lineFiles.loadPlaylist(path, app);
}

void search(benchmark::State& state, void (*fill)(AppState&, int), std::string_view text,
            int hits) {
    AppState app;
    fill(app, sizeOf(state));
    for (auto _ : state) {
        timed(state, [&] { searchrows(app, app.masterList, text); });
        if (app.choiceList.count() != hits)
            state.SkipWithError("wrong hits");
    }
}

void remove(benchmark::State& state, int left, const std::function<void(VirtualMachine&)>& work) {
    const std::vector<Row> rows = mixedRows(sizeOf(state));
    VirtualMachine machine;
    machine.start();
    AppState& app = machine.state();
    for (auto _ : state) {
        fillPlaylist(app, rows);
        for (int index = 1; index < app.playlistView.count(); index += 2)
            app.playlistView.setSelected(index, true);
        timed(state, [&] { work(machine); });
        machine.forget();
        if (app.masterList.count() != left || app.playlistView.count() != left)
            state.SkipWithError("wrong rows left");
    }
}

void removeByText(benchmark::State& state, const std::string& text, int left) {
    remove(state, left, [&text](VirtualMachine& machine) { machine.hear("'listrmv " + text); });
}

// Events run at each step: on the loop that the terminal has.
void removeSelected(benchmark::State& state, int left) {
    remove(state, left, [loop = std::make_shared<PollLoop>()](VirtualMachine& machine) {
        Shell& shell = machine.program->shell;
        Chat& chat = machine.program->chat;
        Removing({shell.state, shell.settings, *loop, machine.dialogs, chat.reply, chat.recitals})
            .removeSelected();
    });
}

void transfer(benchmark::State& state, bool isThereAlready) {
    VirtualMachine machine;
    machine.start();
    AppState& app = machine.state();
    for (const Row& row : scannedRows(sizeOf(state)))
        app.scanRows.add(row);
    const ChatLine line{machine.room.screenName, "'transfer"};
    if (isThereAlready)
        machine.heard(line);
    for (auto _ : state) {
        if (!isThereAlready)
            clearPlaylist(app);
        forgetMemory();
        timed(state, [&] { machine.heard(line); });
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

void addSearchWorks() {
    const std::string_view someTitle = "TITLE 00012", noTitle = "title of no song";
    addSizedWork("play *: 10 hits, list as loaded", 0.002,
                 [=](benchmark::State& state) { search(state, fillFromFile, someTitle, 10); });
    addSizedWork("play *: no hit, list as loaded", 0.002,
                 [=](benchmark::State& state) { search(state, fillFromFile, noTitle, 0); });
    addSizedWork("play *: 10 hits, list as transferred", 0.002,
                 [=](benchmark::State& state) { search(state, fillByTransfer, someTitle, 10); });
    addSizedWork("play *: no hit, list as transferred", 0.002,
                 [=](benchmark::State& state) { search(state, fillByTransfer, noTitle, 0); });
}

void addRemoveWorks() {
    addSizedWork("listrmv of all rows", 0.020,
                 [](benchmark::State& state) { removeByText(state, "ALBUM", 0); });
    addSizedWork("listrmv of every other row", 0.020, [](benchmark::State& state) {
        removeByText(state, ".wav", (sizeOf(state) + 1) / 2);
    });
    addSizedWork("remove file(s), every other row selected", 0.020,
                 [](benchmark::State& state) { removeSelected(state, (sizeOf(state) + 1) / 2); });
}

} // namespace

void addListWorks() {
    addSizedWork("load a playlist into both lists", 0.030, [](benchmark::State& state) {
        load(state, savedOrder(scannedRows(sizeOf(state))));
    });
    addSizedWork("load a playlist in no order", noBudget, [](benchmark::State& state) {
        load(state, shuffledOrder(scannedRows(sizeOf(state))));
    });
    addSearchWorks();
    addSizedWork("transfer of new rows", 0.040,
                 [](benchmark::State& state) { transfer(state, false); });
    addSizedWork("transfer of rows that are there", 0.015,
                 [](benchmark::State& state) { transfer(state, true); });
    addRemoveWorks();
    addSizedWork("collectdirs", 0.005, collect);
    addSizedWork("random pick, all rows but one remembered", 0.005, pick);
    addWork("a setting written to disk", noBudget, writeSetting)->UseRealTime();
}

} // namespace larkspin
