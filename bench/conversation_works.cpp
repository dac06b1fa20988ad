// What kept conversations take of memory, and how long the front ends are about to show one.
#include "host/line_history.h"
#include "host/own_room.h"
#include "platform/qt/room/room_window.h"
#include "platform/terminal/room/room_view.h"
#include "support/qt_application.h"
#include "support/virtual_machine.h"
#include "works.h"

#include <QApplication>
#include <QScrollBar>
#include <QTextEdit>
#include <malloc.h>
#include <utility>

namespace larkspin {

namespace {

constexpr double mostMegabytes = 30, switchOnDesktop = 0.05, switchInTerminal = 0.02, burst = 0.05;
constexpr int rooms = 10, linesInBurst = 1'000;

double megabytesInUse() {
    return static_cast<double>(::mallinfo2().uordblks) / 1e6;
}

// Ten rooms, each as full as can be.
struct FullConversations {
    FullConversations() {
        for (int room = 0; room < rooms; ++room) {
            Conversation& added = conversations.add(
                {Conversation::Kind::room, network, "#room" + std::to_string(room)});
            all.push_back(&added);
            say(added, static_cast<int>(Conversation::mostLines));
        }
    }
    void say(Conversation& in, int lines) {
        for (int line = 0; line < lines; ++line)
            conversations.keep(in, {.kind = KeptLine::Kind::said,
                                    .speaker = "somebody" + std::to_string(line % 50),
                                    .text = "a line of the <b>usual</b> length, such as people "
                                            "write in a room all evening, number " +
                                            std::to_string(line)});
    }
    void enterNext() {
        conversations.enter(*all[static_cast<std::size_t>(++entered) % all.size()]);
    }

    VirtualMachine machine;
    EventLoop& loop = machine.loop;
    ChatLines chatLines{loop};
    Conversations conversations{loop, chatLines, "lobby"};
    const int network = conversations.newNetwork("net");
    std::vector<Conversation*> all;
    int entered = 0;
};

void memory(benchmark::State& state) {
    state.SetLabel("MB");
    const double before = megabytesInUse();
    const FullConversations full;
    for (auto _ : state)
        state.SetIterationTime(1);
    state.counters["amount"] = megabytesInUse() - before;
    state.counters["size"] = rooms * static_cast<double>(Conversation::mostLines);
}

// On a large screen, as far as its cells: what of them is written is the screen's.
struct TerminalRoom : FullConversations {
    void settle() {
        view.showNew();
        Cells cells(60, 200);
        benchmark::DoNotOptimize(view.draw(cells));
    }

    OwnRoom own{conversations, chatLines, "jo", {}};
    LineHistory history{machine.files, machine.drive("history.txt")};
    RoomView view{loop, own, conversations, history};
};

void terminalSwitch(benchmark::State& state) {
    TerminalRoom room;
    for (auto _ : state)
        timed(state, [&] {
            room.enterNext();
            room.settle();
        });
}

// Between two that are read far up.
void terminalSwitchReadBack(benchmark::State& state) {
    TerminalRoom room;
    const auto enter = [&](std::size_t which) {
        room.conversations.enter(*room.all[which]);
        room.settle();
    };
    for (const std::size_t which : {0, 1}) {
        enter(which);
        for (int page = 0; page < 100; ++page)
            room.view.said.scrollPage(-1);
        room.settle();
    }
    std::size_t which = 0;
    for (auto _ : state)
        timed(state, [&] { enter(std::exchange(which, 1 - which)); });
}

void terminalBurst(benchmark::State& state) {
    TerminalRoom room;
    room.enterNext();
    room.settle();
    for (auto _ : state)
        timed(state, [&] {
            room.say(room.conversations.front(), linesInBurst);
            room.settle();
        });
}

struct DesktopRoom : FullConversations {
    DesktopRoom() {
        window.resize(900, 600);
        window.show();
        settle();
    }
    // As an event loop's turn shows and draws it.
    void settle() {
        loop.waitUntil(loop.now() + std::chrono::milliseconds(1));
        QApplication::processEvents();
    }

    OwnRoom own{conversations, chatLines, "jo", {}};
    LineHistory history{machine.files, machine.drive("history.txt")};
    RoomWindow window{loop, own, conversations, history};
};

void desktopSwitch(benchmark::State& state) {
    startQt();
    DesktopRoom room;
    for (auto _ : state)
        timed(state, [&] {
            room.enterNext();
            room.settle();
        });
}

// Between two that are read as far back as one is read there at once.
void desktopSwitchReadBack(benchmark::State& state) {
    startQt();
    DesktopRoom room;
    QTextEdit& said = *room.window.findChild<QTextEdit*>();
    const auto enter = [&](std::size_t which) {
        room.conversations.enter(*room.all[which]);
        room.settle();
    };
    for (const std::size_t which : {0, 1}) {
        enter(which);
        while (said.document()->blockCount() < Transcript::mostLines) {
            said.verticalScrollBar()->setValue(0);
            room.settle();
        }
    }
    std::size_t which = 0;
    for (auto _ : state) {
        timed(state, [&] { enter(std::exchange(which, 1 - which)); });
        for (int turn = 0; turn < 20; ++turn)
            room.settle(); // what comes after what is read
        if (said.document()->blockCount() < Transcript::mostLines / 2)
            state.SkipWithError("isn't whole");
    }
}

void desktopRest(benchmark::State& state) {
    startQt();
    DesktopRoom room;
    for (auto _ : state)
        timed(state, [&] { room.loop.waitUntil(room.loop.now() + std::chrono::nanoseconds(1)); });
}

void desktopBurst(benchmark::State& state) {
    startQt();
    DesktopRoom room;
    room.enterNext();
    room.settle();
    for (auto _ : state)
        timed(state, [&] {
            room.say(room.conversations.front(), linesInBurst);
            room.settle();
        });
}

} // namespace

void addConversationWorks() {
    addWork("conversations: ten of 10,000 lines", mostMegabytes, memory)
        ->UseManualTime()
        ->Iterations(1);
    const struct {
        const char* name;
        double budget;
        WorkRun run;
    } works[] = {
        {"conversations: switch, terminal", switchInTerminal, terminalSwitch},
        {"conversations: switch, terminal, read back", switchInTerminal, terminalSwitchReadBack},
        {"conversations: switch, desktop", switchOnDesktop, desktopSwitch},
        {"conversations: switch, desktop, read back", switchOnDesktop, desktopSwitchReadBack},
        {"conversations: a turn in which nothing changes", noBudget, desktopRest},
        {"conversations: 1,000 lines at once, terminal", burst, terminalBurst},
        {"conversations: 1,000 lines at once, desktop", burst, desktopBurst},
    };
    for (const auto& work : works)
        addWork(work.name, work.budget, work.run)->UseManualTime()->Iterations(10);
}

} // namespace larkspin
