// The scan of a tree on disk, against `find` on the same tree.
#include "app/program.h"
#include "chat/reply.h"
#include "library/listers.h"
#include "library/media_filter.h"
#include "library/scan.h"
#include "made_music.h"
#include "owners_road.h"
#include "support/child.h"
#include "support/virtual_machine.h"
#include "works.h"

namespace larkspin {

namespace {

constexpr int treeSize = 100000;
constexpr double timesFind = 1.1;

// Made before the first repetition, gone with the last: thousands of files take their time.
struct Tree {
    Tree() { makeTree(disk.path(), treeSize); }
    TempDirectory disk;
};

// One `find` and one scan in turn, so that both see the same machine.
void scan(benchmark::State& state, std::shared_ptr<Tree>& tree) {
    if (!tree)
        tree = std::make_shared<Tree>();
    std::filesystem::path root = tree->disk.path();
    for (auto size = state.range(0); size < treeSize; size *= 2)
        root /= "half";
    OwnersRoad road;
    VirtualMachine machine;
    machine.startOn(road.directories);
    AppState& app = machine.state();
    app.scanRoot = road.directories.drivePath(root.native());
    double find = 0;
    for (auto _ : state) {
        find = secondsOf([&] { runFind(root.native()); });
        timed(state, [&] { machine.program->library.scan.Command4_Click(); });
    }
    state.counters["size"] = static_cast<double>(state.range(0));
    state.counters["find"] = find;
    if (state.range(0) == treeSize)
        state.counters["budget"] = timesFind * find;
    const auto found = std::min<std::int64_t>(state.range(0), RowList::limit);
    if (app.scanRows.count() != found)
        state.SkipWithError("files lost");
}

} // namespace

void addScanWorks() {
    const auto tree = std::make_shared<std::shared_ptr<Tree>>();
    const auto run = [tree](benchmark::State& state) { scan(state, *tree); };
    benchmark::RegisterBenchmark("scan of files, 20 to a directory", run)
        ->Arg(treeSize / 4)
        ->Arg(treeSize / 2)
        ->Arg(treeSize)
        ->UseManualTime()
        ->Iterations(1)
        ->Repetitions(15)
        ->ReportAggregatesOnly();
}

} // namespace larkspin
