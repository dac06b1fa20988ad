// What the terminal program takes on a terminal's whole screen: to be seen, of memory and sleep,
// and of the line to the terminal.
#include "home.h"
#include "process_use.h"
#include "support/child.h"
#include "works.h"

#include <functional>
#include <memory>
#include <string>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

constexpr auto screenPatience = 20s;
constexpr auto stillness = 700ms; // after which nothing more is drawn
constexpr unsigned short screenRows = 60, screenColumns = 200;
constexpr int floodLines = 5000;

// Nothing, with an error, if it isn't seen.
std::unique_ptr<Child> seenOn(benchmark::State& state, const Home& home) {
    auto variables = home.variables();
    variables.push_back("TERM=xterm-256color");
    auto child = Child::startOnTerminal(LARKSPIN_TTY, variables);
    if (child)
        child->resize(screenRows, screenColumns);
    if (child && child->shows("larkspin player - by moraine", screenPatience))
        return child;
    state.SkipWithError("isn't seen");
    return nullptr;
}

void screenStart(benchmark::State& state, const HomeCache& cache) {
    const Home home(static_cast<int>(state.range(0)), cache);
    for (auto _ : state) {
        std::unique_ptr<Child> child;
        timed(state, [&] { child = seenOn(state, home); });
    }
}

double ofProcess(Child& child, double (*measure)(pid_t)) {
    child.rest(stillness);
    return measure(child.id());
}

double bytesAfter(Child& child, const std::string& typed, const std::string& last) {
    child.write(typed);
    child.rest(stillness);
    child.write(last);
    return static_cast<double>(child.rest(stillness).size());
}

double bytesOfLine(Child& child) {
    bytesAfter(child, "/as bob", "\r"); // comes in
    return bytesAfter(child, "/as bob what others say in a room", "\r");
}

double bytesOfSong(Child& child) {
    child.write("'play tone\r");
    if (!child.shows("playing", screenPatience))
        return 0;
    child.rest(2s); // the song is named
    constexpr int seconds = 5;
    return static_cast<double>(child.rest(std::chrono::seconds(seconds)).size()) / seconds;
}

// Lines come as fast as they are taken.
double linesOfFlood(Child& child) {
    const double seconds = secondsOf([&] {
        for (int line = 0; line < floodLines; ++line)
            child.write("/as bob line " + std::to_string(line) + " of a flood\r");
        child.write("/as bob WWWWWWWWWWWW\r"); // nothing of it stands there already
        child.shows("WWWWWWWWWWWW", screenPatience);
    });
    return floodLines / seconds;
}

struct ScreenWork {
    std::string name;
    double budget = noBudget, least = noBudget;
    std::string unit;
    std::function<double(Child& child)> measure;
    std::string songType = {};
};

void addOnScreen(const ScreenWork& work, const HomeCache& cache) {
    const auto run = [=](benchmark::State& state) {
        state.counters["size"] = fullSize;
        if (work.least != noBudget)
            state.counters["least"] = work.least;
        state.SetLabel(work.unit);
        const Home home(fullSize, cache, work.songType);
        const auto child = seenOn(state, home);
        for (auto _ : state)
            state.SetIterationTime(1);
        if (child)
            state.counters["amount"] = work.measure(*child);
    };
    addWork("screen: " + work.name, work.budget, run)->UseManualTime()->Iterations(1);
}

} // namespace

void addScreenWorks() {
    const HomeCache cache = std::make_shared<TempDirectory>();
    addSizedWork("screen: start until the greeting is seen", noBudget,
                 [=](benchmark::State& state) { screenStart(state, cache); })
        ->Iterations(1);
    const auto of = [](double (*measure)(pid_t)) {
        return [measure](Child& child) { return ofProcess(child, measure); };
    };
    for (const ScreenWork& work :
         {ScreenWork{"memory at rest", 20, noBudget, "MB", of(megabytes)},
          {"wake-ups at rest", 1, noBudget, "/s", of(wakeupsPerSecond)},
          {"for a line of others", noBudget, noBudget, "bytes", bytesOfLine},
          {"for a second of a song", noBudget, noBudget, "bytes", bytesOfSong, ".wav"},
          {"lines of a flood", noBudget, 1000, "/s", linesOfFlood}})
        addOnScreen(work, cache);
}

} // namespace larkspin
