// What the terminal program takes as a process: to start, of memory, of the processor's sleep.
#include "library/line_files.h"
#include "library/playlist_row.h"
#include "made_music.h"
#include "platform/posix/drive_paths.h"
#include "platform/posix/posix_files.h"
#include "support/child.h"
#include "support/temp_directory.h"
#include "works.h"

#include <fstream>
#include <thread>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

constexpr auto patience = 20s;
constexpr auto wakeupsWatched = 3s;

// What the player below keeps for all its users: it takes seconds to make.
using Cache = std::shared_ptr<TempDirectory>;

// A home with a playlist in which one song really plays.
class Home {
public:
    Home(int rows, Cache cache) : cache_(std::move(cache)) {
        makeSilentSong(song(), 60);
        std::vector<Row> made = scannedRows(rows - 1);
        made.push_back(Row(makerow("silence", ".mp3", drivePath(disk_.path().native()))));
        const auto data = disk_.path() / "larkspin";
        std::filesystem::create_directories(data);
        PosixFiles files;
        LineFiles(files).savelines(drivePath((data / "temp.lst").native()), savedOrder(made));
        disk_.write("larkspin/larkspin.ini",
                    "[lark]\r\nload=212\r\nplayed=4711\r\ntempo=100\r\nvolume=50\r\nsilent=no\r\n"
                    "trigger='\r\nmp3sec=987654\r\nprogsec=1987654\r\nmedia filter=mp3\r\n");
    }

    std::filesystem::path song() const { return disk_.path() / "silence.mp3"; }

    // Everything that the program and the player under it keep stays in here, also the lock
    // by which a running copy is known.
    std::vector<std::string> variables() const {
        const std::string path = disk_.path().native();
        return {"HOME=" + path, "XDG_DATA_HOME=" + path, "XDG_CONFIG_HOME=" + path,
                "XDG_RUNTIME_DIR=" + path, "XDG_CACHE_HOME=" + cache_->path().native()};
    }

    std::unique_ptr<Child> start() const { return Child::start(LARKSPIN_TTY, variables()); }

private:
    TempDirectory disk_;
    Cache cache_;
};

// What is typed while the program starts is answered when it runs.
bool comesUp(Child& child) {
    child.tell("'filter?");
    return child.says("current media filter", patience);
}

// The first start fills the cache: it isn't counted.
bool warmUp(benchmark::State& state, const Home& home) {
    const auto child = home.start();
    if (!child)
        state.SkipWithError("not built");
    else if (!comesUp(*child))
        state.SkipWithError("doesn't start");
    else
        return true;
    return false;
}

bool greets(Child& child) {
    return child.says("larkspin player - by moraine", patience);
}

void start(benchmark::State& state, const Cache& cache, bool (*isThere)(Child&)) {
    const Home home(static_cast<int>(state.range(0)), cache);
    if (!warmUp(state, home))
        return;
    for (auto _ : state) {
        std::unique_ptr<Child> child;
        bool there = false;
        timed(state, [&] {
            child = home.start();
            there = child && isThere(*child);
        });
        if (!there)
            state.SkipWithError("doesn't start");
    }
}

bool hasOpen(pid_t process, const std::filesystem::path& file) {
    const std::filesystem::path open = "/proc/" + std::to_string(process) + "/fd";
    std::error_code gone;
    for (const auto& entry : std::filesystem::directory_iterator(open, gone))
        if (std::filesystem::read_symlink(entry.path(), gone) == file)
            return true;
    return false;
}

// A running program, playing for a second if it shall. Nothing, with an error, if it doesn't.
std::unique_ptr<Child> running(benchmark::State& state, const Home& home, bool playing) {
    if (!warmUp(state, home))
        return nullptr;
    auto child = home.start();
    if (!child || !comesUp(*child)) {
        state.SkipWithError("doesn't start");
        return nullptr;
    }
    if (playing)
        child->tell("'play silence");
    std::this_thread::sleep_for(1s);
    if (playing && !hasOpen(child->id(), home.song())) {
        state.SkipWithError("doesn't play");
        return nullptr;
    }
    return child;
}

// A number of /proc/<pid>/status, which stands behind its name and a colon.
double statusNumber(const std::filesystem::path& process, const std::string& name) {
    std::ifstream status(process / "status");
    for (std::string word; status >> word;) {
        double value = 0;
        if (word == name + ':' && status >> value)
            return value;
    }
    return 0;
}

std::filesystem::path processDirectory(const Child& child) {
    return "/proc/" + std::to_string(child.id());
}

double sleeps(const Child& child) {
    double count = 0;
    std::error_code gone;
    for (const auto& task :
         std::filesystem::directory_iterator(processDirectory(child) / "task", gone))
        count += statusNumber(task.path(), "voluntary_ctxt_switches");
    return count;
}

void memory(benchmark::State& state, const Cache& cache) {
    const Home home(static_cast<int>(state.range(0)), cache);
    const auto child = running(state, home, true);
    for (auto _ : state)
        state.SetIterationTime(1);
    if (child)
        state.counters["amount"] = statusNumber(processDirectory(*child), "VmRSS") / 1024;
    state.SetLabel("MB");
}

void wakeups(benchmark::State& state, const Cache& cache, bool playing) {
    const Home home(fullSize, cache);
    const auto child = running(state, home, playing);
    for (auto _ : state)
        state.SetIterationTime(1);
    if (child) {
        const double before = sleeps(*child);
        std::this_thread::sleep_for(wakeupsWatched);
        state.counters["amount"] =
            (sleeps(*child) - before) / std::chrono::duration<double>(wakeupsWatched).count();
    }
    state.SetLabel("/s");
}

} // namespace

void addTerminalWorks() {
    const auto once = [](benchmark::internal::Benchmark* work) {
        work->UseManualTime()->Iterations(1)->Repetitions(3);
    };
    const auto cache = std::make_shared<TempDirectory>();
    once(addSizedWork("start to greeting", 0.200,
                      [=](benchmark::State& state) { start(state, cache, greets); }));
    once(addSizedWork("start until it takes commands", noBudget,
                      [=](benchmark::State& state) { start(state, cache, comesUp); }));
    once(addSizedWork("resident memory, a song playing", 60,
                      [=](benchmark::State& state) { memory(state, cache); }));
    once(addWork("wake-ups while idle", noBudget,
                 [=](benchmark::State& state) { wakeups(state, cache, false); }));
    once(addWork("wake-ups while a song plays", noBudget,
                 [=](benchmark::State& state) { wakeups(state, cache, true); }));
}

} // namespace larkspin
