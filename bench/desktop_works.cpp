// What the desktop program takes as a process, on a display of its own, and what its windows take
// of every turn.
#include "chat_server.h"
#include "first_paint.h"
#include "home.h"
#include "host/conversation.h"
#include "library/playlist.h"
#include "made_music.h"
#include "platform/qt/windows/desk.h"
#include "process_use.h"
#include "support/child.h"
#include "support/listener.h"
#include "support/qt_application.h"
#include "works.h"

#include <csignal>
#include <thread>

namespace larkspin {

namespace {

constexpr auto patience = 20s;
constexpr auto untilAtRest = 2s;

constexpr const char* roomTitle = "^larkspin - lobby$";
constexpr const char* mediaTitle = "^larkspin media$";

// A program without a bus and without a sound device.
class RunningDesktop {
public:
    RunningDesktop(const Home& home, const XServer& server) {
        std::vector<std::string> variables = home.variables();
        for (const char* const variable :
             {"PULSE_SERVER=none", "PIPEWIRE_REMOTE=none", "ALSA_CONFIG_PATH=/dev/null",
              "DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent",
              "DBUS_SYSTEM_BUS_ADDRESS=unix:path=/nonexistent",
              "WAYLAND_DISPLAY=", "QT_QPA_PLATFORM=", "QT_QPA_PLATFORMTHEME="})
            variables.emplace_back(variable);
        variables.push_back("DISPLAY=" + server.display());
        child_ = Child::start(LARKSPIN_DESKTOP, variables);
    }
    ~RunningDesktop() {
        if (child_ && ::kill(child_->id(), SIGTERM) == 0)
            child_->ends(patience);
    }
    RunningDesktop(const RunningDesktop&) = delete;
    RunningDesktop& operator=(const RunningDesktop&) = delete;

    pid_t id() const { return child_->id(); }

private:
    std::unique_ptr<Child> child_;
};

// The first start fills the cache: it isn't counted.
bool warmUp(benchmark::State& state, const Home& home, const XServer& server) {
    FirstPaint paint(server.display());
    const RunningDesktop desktop(home, server);
    const bool there = paint.comes(patience);
    if (!there)
        state.SkipWithError("shows nothing");
    return there;
}

void start(benchmark::State& state, const HomeCache& cache) {
    const Home home(static_cast<int>(state.range(0)), cache);
    const XServer server;
    if (!warmUp(state, home, server))
        return;
    for (auto _ : state) {
        FirstPaint paint(server.display());
        const auto begin = std::chrono::steady_clock::now();
        const RunningDesktop desktop(home, server);
        const bool there = paint.comes(patience);
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
        state.SetIterationTime(taken.count());
        if (!there)
            state.SkipWithError("shows nothing");
    }
}

bool isSeen(const XServer& server, const char* title) {
    return server.hand({"search", "--onlyvisible", "--name", title});
}

bool comes(const XServer& server, const char* title) {
    return server.hand({"search", "--sync", "--onlyvisible", "--name", title});
}

// The media window by its own key, the room as a window manager does away with it.
bool hideWindows(const XServer& server) {
    server.hand({"search", "--onlyvisible", "--name", mediaTitle, "windowfocus", "--sync", "%1",
                 "key", "Escape", "sleep", "0.3"});
    server.hand({"search", "--onlyvisible", "--name", roomTitle, "windowunmap", "--sync", "%1"});
    return !isSeen(server, mediaTitle) && !isSeen(server, roomTitle);
}

bool leaveWindows(const XServer&) {
    return true;
}

void amount(benchmark::State& state, const HomeCache& cache, const char* unit,
            bool (*arrange)(const XServer&), double (*measure)(pid_t)) {
    state.counters["size"] = fullSize;
    state.SetLabel(unit);
    const Home home(fullSize, cache, "", "mp3svis=yes\r\n");
    const XServer server;
    if (!warmUp(state, home, server))
        return;
    const RunningDesktop desktop(home, server);
    const bool shows = comes(server, roomTitle) && comes(server, mediaTitle);
    std::this_thread::sleep_for(untilAtRest);
    if (!shows || !arrange(server))
        state.SkipWithError("its windows don't obey");
    for (auto _ : state)
        state.SetIterationTime(1);
    state.counters["amount"] = measure(desktop.id());
}

// Ten rooms as full as can be come from a network, beside a full list.
bool fillRooms(const Descriptor& client) {
    constexpr int rooms = 10;
    if (!waitFor(client, "USER "))
        return false;
    say(client, ":irc.test 001 jo :welcome\r\n");
    if (!waitFor(client, "JOIN "))
        return false;
    for (int room = 0; room < rooms; ++room) {
        const std::string name = "#room" + std::to_string(room);
        say(client, ":jo!jo@irc.test JOIN " + name + "\r\n:irc.test 353 jo = " + name +
                        " :jo bob\r\n:irc.test 366 jo " + name + " :all\r\n");
        std::string lines;
        for (std::size_t line = 0; line < Conversation::mostLines; ++line)
            lines += ":somebody" + std::to_string(line % 50) + "!bob@irc.test PRIVMSG " + name +
                     " :a line of the \x02usual\x02 length, such as people write in a room all "
                     "evening, number " +
                     std::to_string(line) + "\r\n";
        say(client, lines);
    }
    say(client, "PING :whole\r\n");
    return waitFor(client, "whole");
}

void memoryOfAnEvening(benchmark::State& state, const HomeCache& cache) {
    const Listener listener;
    const Home home(fullSize, cache, "", "mp3svis=yes\r\n");
    home.keep("irc.txt", "server=127.0.0.1\nport=" + std::to_string(listener.port()) +
                             "\ntls=no\nnick=jo\nroom=#room0\nconnect=yes\n");
    const XServer server;
    state.counters["size"] = fullSize;
    state.SetLabel("MB");
    const RunningDesktop desktop(home, server);
    const Descriptor client = listener.take();
    if (!fillRooms(client) || !comes(server, "^larkspin - #room0") || !comes(server, mediaTitle))
        state.SkipWithError("gets into no room");
    std::this_thread::sleep_for(untilAtRest);
    for (auto _ : state)
        state.SetIterationTime(1);
    state.counters["amount"] = megabytes(desktop.id());
}

// The windows ask for everything that they show, once per turn.
void restingTurn(benchmark::State& state) {
    startQt();
    Desk desk;
    for (const Row& row : scannedRows(static_cast<int>(state.range(0)) - 3))
        addToPlaylist(desk.state(), row);
    for (Window* const window : desk.program->windows())
        desk.show(window->name);
    for (auto _ : state)
        timed(state, [&] { desk.loop.waitUntil(desk.loop.now() + 1ns); });
    if (desk.state().playlistView.count() != state.range(0))
        state.SkipWithError("rows lost");
}

void addAmount(const std::string& name, double budget, const HomeCache& cache, const char* unit,
               bool (*arrange)(const XServer&), double (*measure)(pid_t)) {
    addWork(name, budget,
            [=](benchmark::State& state) { amount(state, cache, unit, arrange, measure); })
        ->UseManualTime()
        ->Iterations(1)
        ->Repetitions(3);
}

} // namespace

void addDesktopWorks() {
    const HomeCache cache = std::make_shared<TempDirectory>();
    addSizedWork("desktop: start to first paint", 0.150, [=](benchmark::State& state) {
        start(state, cache);
    })->Iterations(1);
    constexpr double forSongs = 60, forRooms = 30; // megabytes: each has a budget of its own
    addAmount("desktop: memory at rest", forSongs, cache, "MB", leaveWindows, megabytes);
    addWork("desktop: memory, ten full rooms, too", forSongs + forRooms,
            [=](benchmark::State& state) { memoryOfAnEvening(state, cache); })
        ->UseManualTime()
        ->Iterations(1);
    addAmount("desktop: wake-ups, windows hidden", 2, cache, "/s", hideWindows, wakeupsPerSecond);
    addSizedWork("desktop: a turn in which nothing changes", noBudget, restingTurn);
}

} // namespace larkspin
