// What the terminal program takes as a process: to start, of memory, of the processor's sleep.
#include "library/line_files.h"
#include "library/playlist_row.h"
#include "made_music.h"
#include "platform/posix/drive_paths.h"
#include "platform/posix/posix_files.h"
#include "support/child.h"
#include "support/made_songs.h"
#include "support/temp_directory.h"
#include "works.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

constexpr auto patience = 20s;
constexpr auto wakeupsWatched = 3s;
constexpr auto songLength = 60s;

// What the start waits before it greets.
constexpr double startPause = 0.1;

// What the player below keeps for all its users: it takes seconds to make.
using Cache = std::shared_ptr<TempDirectory>;

// A home with a playlist in which one song really plays, if there is to be one.
class Home {
public:
    Home(int rows, Cache cache, const std::string& songType = "")
        : song_(disk_.path() / ("tone" + songType)), cache_(std::move(cache)) {
        std::vector<Row> made = scannedRows(rows - 1);
        made.push_back(Row(rowOfFile(song_.filename().native(), drivePath(disk_.path().native()))));
        if (!songType.empty())
            makeSong(song_, std::chrono::duration<double>(songLength).count());
        const auto data = disk_.path() / "larkspin";
        std::filesystem::create_directories(data);
        PosixFiles files;
        LineFiles(files).savelines(drivePath((data / "temp.lst").native()), savedOrder(made));
        disk_.write("larkspin/larkspin.ini",
                    "[lark]\r\nload=212\r\nplayed=4711\r\ntempo=100\r\nvolume=50\r\nsilent=no\r\n"
                    "trigger='\r\nmp3sec=987654\r\nprogsec=1987654\r\nmedia filter=mp3\r\n");
    }

    bool hasSong() const { return std::filesystem::exists(song_); }
    const std::filesystem::path& song() const { return song_; }

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
    std::filesystem::path song_;
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

void start(benchmark::State& state, const Cache& cache, bool (*isThere)(Child&), double pauses) {
    const Home home(static_cast<int>(state.range(0)), cache);
    if (!warmUp(state, home))
        return;
    for (auto _ : state) {
        const auto begin = std::chrono::steady_clock::now();
        const std::unique_ptr<Child> child = home.start();
        const bool there = child && isThere(*child);
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
        state.SetIterationTime(std::max(taken.count() - pauses, 0.0));
        if (!there)
            state.SkipWithError("doesn't start");
    }
}

std::filesystem::path processDirectory(pid_t process) {
    return "/proc/" + std::to_string(process);
}

// The process with all that it has started, and what these have.
std::vector<pid_t> processTree(pid_t root) {
    std::vector<pid_t> tree{root};
    std::error_code gone;
    for (const auto& task :
         std::filesystem::directory_iterator(processDirectory(root) / "task", gone)) {
        std::ifstream children(task.path() / "children");
        for (pid_t child = 0; children >> child;)
            std::ranges::copy(processTree(child), std::back_inserter(tree));
    }
    return tree;
}

// Not every song's file stays open while it plays, but its position comes by the first second.
bool plays(Child& child) {
    for (int look = 0; look < 50; ++look) {
        child.tell("'pos");
        if (child.says("song position:  <b>0</b>:<b>01", 200ms))
            return true;
    }
    return false;
}

// A running program, playing for a second if there is a song. Nothing, with an error, if it
// doesn't.
std::unique_ptr<Child> running(benchmark::State& state, const Home& home) {
    if (!warmUp(state, home))
        return nullptr;
    auto child = home.start();
    if (!child || !comesUp(*child)) {
        state.SkipWithError("doesn't start");
        return nullptr;
    }
    if (home.hasSong())
        child->tell("'play tone");
    else
        std::this_thread::sleep_for(1s);
    if (home.hasSong() && !plays(*child)) {
        state.SkipWithError("doesn't play");
        return nullptr;
    }
    return child;
}

// A number of a file such as /proc/<pid>/status, which stands behind its name and a colon.
double numberIn(const std::filesystem::path& file, const std::string& name) {
    std::ifstream lines(file);
    for (std::string word; lines >> word;) {
        double value = 0;
        if (word == name + ':' && lines >> value)
            return value;
    }
    return 0;
}

double sleeps(const Child& child) {
    double count = 0;
    std::error_code gone;
    for (const pid_t process : processTree(child.id()))
        for (const auto& task :
             std::filesystem::directory_iterator(processDirectory(process) / "task", gone))
            count += numberIn(task.path() / "status", "voluntary_ctxt_switches");
    return count;
}

// What is shared with other processes counts by its share.
double megabytes(const Child& child) {
    double kilobytes = 0;
    for (const pid_t process : processTree(child.id()))
        kilobytes += numberIn(processDirectory(process) / "smaps_rollup", "Pss");
    return kilobytes / 1024;
}

void amount(benchmark::State& state, const Cache& cache, const std::string& songType,
            const std::string& unit, double (*measure)(const Child&)) {
    state.counters["size"] = fullSize;
    state.SetLabel(unit);
    const Home home(fullSize, cache, songType);
    if (!songType.empty() && !home.hasSong())
        state.SkipWithError("no song made");
    const auto child = running(state, home);
    for (auto _ : state)
        state.SetIterationTime(1);
    if (child)
        state.counters["amount"] = measure(*child);
}

double wakeupsPerSecond(const Child& child) {
    const double before = sleeps(child);
    std::this_thread::sleep_for(wakeupsWatched);
    return (sleeps(child) - before) / std::chrono::duration<double>(wakeupsWatched).count();
}

void addAmount(const std::string& name, double budget, const Cache& cache,
               const std::string& songType, const std::string& unit,
               double (*measure)(const Child&)) {
    addWork(name, budget,
            [=](benchmark::State& state) { amount(state, cache, songType, unit, measure); })
        ->UseManualTime()
        ->Iterations(1)
        ->Repetitions(3);
}

} // namespace

void addTerminalWorks() {
    const auto cache = std::make_shared<TempDirectory>();
    const auto addStart = [&](const std::string& name, double budget, bool (*isThere)(Child&),
                              double pauses) {
        addSizedWork(name, budget, [=](benchmark::State& state) {
            start(state, cache, isThere, pauses);
        })->Iterations(1);
    };
    addStart("start to greeting, less its pause", 0.030, greets, startPause);
    addStart("start until it takes commands", noBudget, comesUp, 0);
    addAmount("memory at rest", 20, cache, "", "MB", megabytes);
    addAmount("memory, playing MP3", 40, cache, ".mp3", "MB", megabytes);
    addAmount("memory, playing WMA", 60, cache, ".wma", "MB", megabytes);
    addAmount("memory, playing MIDI", 60, cache, ".mid", "MB", megabytes);
    addAmount("wake-ups at rest", 1, cache, "", "/s", wakeupsPerSecond);
    addAmount("wake-ups, playing MP3", noBudget, cache, ".mp3", "/s", wakeupsPerSecond);
}

} // namespace larkspin
