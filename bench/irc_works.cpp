// What the terminal program takes in a room of a server in this machine: to get there, of memory,
// of the processor's sleep, and how fast it takes in what a stranger says.
#include "chat_server.h"
#include "home.h"
#include "process_use.h"
#include "support/irc_recital.h"
#include "support/irc_server.h"
#include "support/listener.h"
#include "support/own_network.h"
#include "support/pipe.h"
#include "works.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <sys/wait.h>
#include <thread>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

constexpr auto patience = 20s;
constexpr unsigned mostSeconds = 120; // for one measurement
// After it has come in: as soon as the price allows it, the server is asked once how quick it is.
constexpr auto untilAtRest = 15s;

// What the start waits before it takes commands and gets into rooms.
constexpr double startPauses = 0.4;

constexpr double longestCommand = 1; // second

constexpr int floodLines = 20'000;
constexpr double linesPerSecond = 10'000;

struct Measured {
    double amount = 0, answer = 0; // the latter is seconds
};
using Measure = std::function<std::optional<Measured>(const Home&)>;

// In a process of its own, so that the other works are measured outside of that network. It must
// not clean up what it has inherited from this process, so it cleans up nothing; what it makes on
// the disk lies where this process does.
std::optional<Measured> inOwnNetwork(const Measure& measure, const Home& home) {
    const TempDirectory disk;
    Pipe result;
    std::fflush(stdout);
    const pid_t id = ::fork();
    if (id == 0) {
        ::alarm(mostSeconds);
        ::setenv("TMPDIR", disk.path().c_str(), 1);
        enterOwnNetwork();
        const auto measured = isAlone() ? measure(home) : std::nullopt;
        if (!isAlone())
            std::fputs("The system allows no network of a process's own.\n", stderr);
        if (measured)
            result.write({reinterpret_cast<const char*>(&*measured), sizeof *measured});
        std::fflush(stdout);
        ::_exit(0);
    }
    result.closeIn();
    Measured measured{};
    const bool came = ::read(result.out(), &measured, sizeof measured) == sizeof measured;
    ::waitpid(id, nullptr, 0);
    return came ? std::optional(measured) : std::nullopt;
}

std::unique_ptr<Child> startOn(const Home& home) {
    auto variables = home.variables();
    variables.emplace_back("DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent");
    variables.emplace_back("DBUS_SYSTEM_BUS_ADDRESS=unix:path=/nonexistent");
    return Child::start(LARKSPIN_TTY, variables);
}

bool joins(Child& child) {
    return child.says("[room] you are in #den", patience);
}

// Where the owner has been in the run before, so that a program gets there by itself. That run also
// fills the cache.
bool goesThere(const Home& home, const std::string& server) {
    const auto child = startOn(home);
    child->tell("/connect " + server + " jo #den");
    return joins(*child);
}

constexpr const char* plain = "plain irc.test";
constexpr const char* encrypted = "irc.test";

std::optional<Measured> start(const Home& home, const char* server) {
    const LocalIrcServer running;
    if (!goesThere(home, server))
        return std::nullopt;
    const auto begin = std::chrono::steady_clock::now();
    const auto child = startOn(home);
    const bool there = joins(*child);
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
    if (!there)
        return std::nullopt;
    return Measured{std::max(taken.count() - startPauses, 0.0)};
}

std::optional<Measured> atRest(const Home& home, const char* server, double (*measure)(pid_t)) {
    const LocalIrcServer running;
    if (!goesThere(home, server))
        return std::nullopt;
    const auto child = startOn(home);
    if (!joins(*child))
        return std::nullopt;
    std::this_thread::sleep_for(untilAtRest);
    return Measured{measure(child->id())};
}

std::string lineOfFlood(int number) {
    return "'volume 99, says a \x02stranger\x02 in line " + std::to_string(number);
}

bool answers(Child& child) {
    child.tell("'filter?");
    return child.says("current media filter", patience);
}

// From a server that is as fast as the program, and waits for it: a real one gives up on what
// doesn't take its lines. The first line begins it; the owner asks in the middle, and at the end.
std::optional<Measured> flood(const Home& home) {
    std::string lines;
    for (int line = 1; line <= floodLines; ++line)
        lines += ":bob!bob@irc.test PRIVMSG #den :" + lineOfFlood(line) + "\r\n";
    const Listener listener;
    const auto child = startOn(home);
    child->tell("/connect plain 127.0.0.1:" + std::to_string(listener.port()) + " jo #den");
    const Descriptor client = listener.take();
    waitFor(client, "USER ");
    say(client, ":irc.test 001 jo :welcome\r\n");
    waitFor(client, "JOIN ");
    say(client, ":jo!jo@irc.test JOIN #den\r\n:irc.test 353 jo = #den :jo bob\r\n"
                ":irc.test 366 jo #den :all\r\n");
    if (!joins(*child))
        return std::nullopt;
    const std::jthread saying([&] { say(client, lines); });
    bool hears = false, answersAmid = false;
    double answer = 0;
    const double seconds = secondsOf([&] {
        hears = child->says("in line " + std::to_string(floodLines / 2), patience);
        answer = secondsOf([&] { answersAmid = answers(*child); });
        hears = hears && child->says("in line " + std::to_string(floodLines), patience);
    });
    // What the owner says then may have to wait for the pace at which a server takes his lines.
    hears = hears && answers(*child);
    ::shutdown(client.number(), SHUT_RDWR); // what can't be said any more
    if (!hears || !answersAmid)
        return std::nullopt;
    return Measured{floodLines / seconds, answer};
}

struct RoomWork {
    std::string name;
    double budget;
    const char* unit; // blank for seconds
    Measure measure;
    double least = noBudget;
};

void run(benchmark::State& state, const RoomWork& work, const HomeCache& cache) {
    const bool isTime = *work.unit == '\0';
    state.counters["size"] = fullSize;
    state.SetLabel(work.unit);
    const auto found = inOwnNetwork(work.measure, Home(fullSize, cache));
    if (!found)
        state.SkipWithError("gets into no room");
    const Measured measured = found.value_or(Measured{});
    for (auto _ : state)
        state.SetIterationTime(isTime ? measured.amount : 1);
    if (!isTime)
        state.counters["amount"] = measured.amount;
    if (work.least != noBudget)
        state.counters["least"] = work.least;
    if (measured.answer > 0)
        state.counters["answer amid it"] = measured.answer;
}

void add(const RoomWork& work, const HomeCache& cache) {
    addWork(work.name, work.budget, [=](benchmark::State& state) { run(state, work, cache); })
        ->UseManualTime()
        ->Iterations(1)
        ->Repetitions(3);
}

// On the virtual clock, at servers that count as each family does. An owner who types every quarter
// of a minute; the row is the command that took longest.
void commandAmidRecital(benchmark::State& state, const IrcPenalties& family) {
    for (auto _ : state) {
        const IrcRecital recital = reciteOn(family, 16'300ms);
        state.SetIterationTime(recital.latestCommand.count());
        state.counters["its answer is out"] = recital.latestAnswer.count();
        state.counters["150 lines"] = recital.whole.count();
        if (recital.lines != 150)
            state.SkipWithError("lost lines");
    }
}

} // namespace

void addIrcWorks() {
    const HomeCache cache = std::make_shared<TempDirectory>();
    const auto starts = [](const char* server) {
        return [=](const Home& home) { return start(home, server); };
    };
    const auto rests = [](const char* server, double (*measure)(pid_t)) {
        return [=](const Home& home) { return atRest(home, server, measure); };
    };
    const RoomWork works[] = {
        {"room: start to joined, less its pauses", noBudget, "", starts(plain)},
        {"room: start to joined over TLS, less them", noBudget, "", starts(encrypted)},
        {"room: memory at rest", 20, "MB", rests(plain, megabytes)},
        {"room: memory at rest, over TLS", 25, "MB", rests(encrypted, megabytes)},
        {"room: wake-ups at rest", 1, "/s", rests(plain, wakeupsPerSecond)},
        {"room: wake-ups at rest, over TLS", 1, "/s", rests(encrypted, wakeupsPerSecond)},
        {"room: lines of a stranger's flood", noBudget, "/s", flood, linesPerSecond},
    };
    for (const RoomWork& work : works)
        add(work, cache);
    for (const IrcPenalties& family : ircPenalties)
        addWork(std::string("room: command amid a recital, ") + family.name, longestCommand,
                [&](benchmark::State& state) { commandAmidRecital(state, family); })
            ->UseManualTime()
            ->Iterations(1)
            ->Repetitions(2);
}

} // namespace larkspin
