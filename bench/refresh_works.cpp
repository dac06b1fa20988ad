// The works that ask the disk or all rows about the playlist: the full refresh, against `find` on
// the same directories, and `count *`.
#include "app/program.h"
#include "library/playlist.h"
#include "library/playlist_row.h"
#include "made_music.h"
#include "owners_road.h"
#include "platform/posix/drive_paths.h"
#include "support/child.h"
#include "support/virtual_machine.h"
#include "works.h"

#include <fstream>

namespace larkspin {

namespace {

constexpr double timesFind = 2;

int sizeOf(const benchmark::State& state) {
    return static_cast<int>(state.range(0));
}

// As many empty files as rows, in the directories that go with them. Made before the first
// repetition, gone with the last: thousands of files take their time.
struct Tree {
    explicit Tree(int files) {
        for (const Row& made : scannedRows(files)) {
            const Song song = songOfRow(made.text());
            const auto album = song.directory.substr(song.directory.rfind('\\') + 1);
            const auto directory = disk.path() / album;
            std::filesystem::create_directories(directory);
            std::ofstream(directory / song.title());
            rows.push_back(Row(makerow(song.name, song.extension, drivePath(directory.native()))));
        }
    }
    TempDirectory disk;
    std::vector<Row> rows;
};

// One `find` and one refresh in turn, so that both see the same machine.
void refresh(benchmark::State& state, std::shared_ptr<Tree>& tree) {
    OwnersRoad road;
    VirtualMachine machine;
    machine.startOn(road.directories);
    if (!tree)
        tree = std::make_shared<Tree>(sizeOf(state));
    AppState& app = machine.state();
    for (const Row& row : tree->rows)
        addToPlaylist(app, row);
    const ChatLine line{machine.room.screenName, "'ref"};
    double find = 0;
    for (auto _ : state) {
        find = secondsOf([&] { runFind(tree->disk.path().native()); });
        timed(state, [&] { machine.heard(line); });
        if (machine.said() != "list refreshed - no change")
            state.SkipWithError("rows lost");
        machine.forget();
    }
    state.counters["size"] = static_cast<double>(sizeOf(state));
    state.counters["find"] = find;
    state.counters["budget"] = timesFind * find;
}

void count(benchmark::State& state, const std::string& text, int matches) {
    VirtualMachine machine;
    machine.start();
    for (const Row& row : scannedRows(sizeOf(state)))
        addToPlaylist(machine.state(), row);
    const ChatLine line{machine.room.screenName, "'count " + text};
    for (auto _ : state) {
        timed(state, [&] { machine.heard(line); });
        if (machine.state().matchCount != std::to_string(matches))
            state.SkipWithError("wrong count");
        machine.forget();
    }
}

} // namespace

void addRefreshWorks() {
    const auto tree = std::make_shared<std::shared_ptr<Tree>>();
    // Of one size: how the time grows is the disk's affair.
    benchmark::RegisterBenchmark("full refresh",
                                 [tree](benchmark::State& state) { refresh(state, *tree); })
        ->Arg(fullSize)
        ->UseManualTime()
        ->Repetitions(7)
        ->ReportAggregatesOnly();
    addSizedWork("count *: every row", 0.003,
                 [](benchmark::State& state) { count(state, "some title", sizeOf(state)); });
    addSizedWork("count *: no row", 0.003,
                 [](benchmark::State& state) { count(state, "title of no song", 0); });
}

} // namespace larkspin
