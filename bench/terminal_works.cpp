// What the terminal program takes as a process: to start, of memory, of the processor's sleep.
#include "home.h"
#include "process_use.h"
#include "support/child.h"
#include "works.h"

#include <algorithm>
#include <thread>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

constexpr auto patience = 20s;

// What the start waits before it greets.
constexpr double startPause = 0.1;

std::unique_ptr<Child> startOn(const Home& home) {
    return Child::start(LARKSPIN_TTY, home.variables());
}

// What is typed while the program starts is answered when it runs.
bool comesUp(Child& child) {
    child.tell("'filter?");
    return child.says("current media filter", patience);
}

// The first start fills the cache: it isn't counted.
bool warmUp(benchmark::State& state, const Home& home) {
    const auto child = startOn(home);
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

void start(benchmark::State& state, const HomeCache& cache, bool (*isThere)(Child&),
           double pauses) {
    const Home home(static_cast<int>(state.range(0)), cache);
    if (!warmUp(state, home))
        return;
    for (auto _ : state) {
        const auto begin = std::chrono::steady_clock::now();
        const std::unique_ptr<Child> child = startOn(home);
        const bool there = child && isThere(*child);
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
        state.SetIterationTime(std::max(taken.count() - pauses, 0.0));
        if (!there)
            state.SkipWithError("doesn't start");
    }
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
    auto child = startOn(home);
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

void amount(benchmark::State& state, const HomeCache& cache, const std::string& songType,
            const std::string& unit, double (*measure)(pid_t)) {
    state.counters["size"] = fullSize;
    state.SetLabel(unit);
    const Home home(fullSize, cache, songType);
    if (!songType.empty() && !home.hasSong())
        state.SkipWithError("no song made");
    const auto child = running(state, home);
    for (auto _ : state)
        state.SetIterationTime(1);
    if (child)
        state.counters["amount"] = measure(child->id());
}

void addAmount(const std::string& name, double budget, const HomeCache& cache,
               const std::string& songType, const std::string& unit, double (*measure)(pid_t)) {
    addWork(name, budget,
            [=](benchmark::State& state) { amount(state, cache, songType, unit, measure); })
        ->UseManualTime()
        ->Iterations(1)
        ->Repetitions(3);
}

} // namespace

void addTerminalWorks() {
    const HomeCache cache = std::make_shared<TempDirectory>();
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
    for (const std::string type : {".flac", ".ogg", ".opus", ".m4a", ".aac"})
        addAmount("memory, playing " + type, 60, cache, type, "MB", megabytes);
    addAmount("wake-ups at rest", 1, cache, "", "/s", wakeupsPerSecond);
    addAmount("wake-ups, playing MP3", noBudget, cache, ".mp3", "/s", wakeupsPerSecond);
}

} // namespace larkspin
