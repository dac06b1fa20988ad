// What it takes to work a client's windows: by the bridge, in Wine, a client of plain windows that
// has many of them. And what its running text takes, for which none of these is needed.
#include "chat/chat_lines.h"
#include "host/conversations.h"
#include "host/window_room/window_room.h"
#include "platform/bridge/bridge_session.h"
#include "platform/posix/poll_loop.h"
#include "support/windows_machine.h"
#include "works.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <optional>

namespace larkspin {

namespace {

constexpr int people = 100, furtherWindows = 30;

constexpr double walkBudget = 0.030, sayBudget = 0.040, peopleBudget = 0.1, ignoreBudget = 0.25,
                 hearBudget = 0.2, textBudget = 0.001;

std::string nameOf(int person) {
    return "Person " + std::to_string(person);
}

struct ClientInWine {
    bool reach(WindowSession& by) {
        by.begin();
        loop.waitFor([&] { return by.state() == WindowSession::State::up; }, loop.now() + patience);
        return by.state() == WindowSession::State::up;
    }
    // Each further window is one in which a message is written.
    bool fills() {
        for (int window = 0; window < furtherWindows; ++window)
            host.gotoKeyword("aol://9293:" + nameOf(window));
        std::string names = "people Owner";
        for (int person = 1; person < people; ++person)
            names += '|' + nameOf(person);
        client.tell(names);
        return comes([this] {
            return session.calls().walk(roomWatch(0).windows).size() > furtherWindows &&
                   host.roomPeople().listPeople().size() == people;
        });
    }

    WindowsClient client;
    PollLoop loop;
    BridgeSession session{loop, LARKSPIN_BRIDGE};
    WindowTreeHost host{session.calls(), loop};
    const bool isThere = reach(session) && fills();
};

// Begun by the first work that needs it.
using LateClient = std::shared_ptr<std::optional<ClientInWine>>;

ClientInWine* begun(benchmark::State& state, const LateClient& late) {
    if (!*late)
        late->emplace();
    if ((*late)->isThere)
        return &**late;
    state.SkipWithError("no client begins");
    return nullptr;
}

// Done by asking the bridge, and then seen to be done.
struct WindowWork {
    std::string name;
    double budget;
    std::function<bool(ClientInWine& client)> works;
    std::function<bool(ClientInWine& client)> isDone = [](ClientInWine&) { return true; };
};

void run(benchmark::State& state, const WindowWork& work, const LateClient& late) {
    ClientInWine* const client = begun(state, late);
    for (auto _ : state) {
        if (!client)
            break;
        bool works = false;
        const unsigned before = client->session.questions();
        timed(state, [&] { works = work.works(*client); });
        state.counters["questions"] = client->session.questions() - before;
        if (!works || !work.isDone(*client))
            state.SkipWithError("not done");
    }
}

// As a search through the room does it with each of whom it finds.
bool ignores(ClientInWine& client) {
    const People found = client.host.roomPeople().listPeople();
    const auto person = std::ranges::find(found, nameOf(people / 2), &Person::name);
    return person != found.end() && client.host.currentScreenName() != person->name &&
           client.host.roomPeople().toggleIgnored(*person) == Deed::done;
}

// The room as the program has it, which a bridge of its own watches.
class HeardRoom {
public:
    explicit HeardRoom(ClientInWine& client) : loop_(client.loop) {
        lines_.connect([this](const ChatLine& line) { heard_ = line.text; });
        room_.reachBy(session_);
        room_.connect();
        loop_.waitFor([this] { return !conversations_.front().isAtHome(); },
                      loop_.now() + patience);
    }
    bool hears(const std::string& text) {
        loop_.waitFor([&] { return heard_ == text; }, loop_.now() + patience);
        return heard_ == text;
    }
    unsigned questions() const { return session_.questions(); }

private:
    PollLoop& loop_;
    ChatLines lines_{loop_};
    Conversations conversations_{loop_, lines_, "lobby"};
    BridgeSession session_{loop_, LARKSPIN_BRIDGE};
    WindowRoom room_{loop_, lines_, conversations_, {}};
    std::string heard_;
};

// The bridge looks now and then, and each time the line is said at another moment between two
// looks. The quickest one hardly waits for a look.
void hear(benchmark::State& state, const LateClient& late) {
    ClientInWine* const client = begun(state, late);
    std::optional<HeardRoom> room;
    if (client)
        room.emplace(*client);
    double quickest = std::numeric_limits<double>::max();
    int said = 0;
    for (auto _ : state) {
        if (!client)
            break;
        const auto lookInterval = std::chrono::milliseconds(bridge::lookMilliseconds);
        client->loop.waitUntil(client->loop.now() + lookInterval * (said % 20) / 20);
        const std::string text = "a line of the usual length, number " + std::to_string(++said);
        bool hears = false;
        const unsigned before = room->questions();
        const double seconds = secondsOf([&] {
            client->client.tell("say Ann\t" + text);
            hears = room->hears(text);
        });
        quickest = std::min(quickest, seconds);
        state.SetIterationTime(seconds);
        state.counters["questions"] = room->questions() - before;
        if (!hears)
            state.SkipWithError("not heard");
    }
    state.counters["without the wait for a look"] = quickest;
}

// A line comes to a text that is as long as it may be, and so loses its head. Where somebody says
// the same again and again there is more to compare.
void takeLine(benchmark::State& state, bool isRepeated) {
    std::string all;
    for (int number = 0; all.size() < RunningText::known * 3 / 2; ++number) {
        const bool isNumbered = !isRepeated || all.size() < RunningText::known / 2;
        all += "Ann:\ta line of the usual length, such as people write in a room all evening" +
               (isNumbered ? ' ' + std::to_string(number) : "") + "\r\n";
    }
    RunningText text;
    std::size_t length = all.size();
    const auto addLine = [&](std::size_t to) {
        length = all.find("\r\n", to) + 2;
        return std::string_view(all).substr(length - RunningText::known, RunningText::known);
    };
    for (auto _ : state) {
        if (length == all.size()) {
            text.forget();
            const std::string_view first = addLine(RunningText::known);
            text.take(first, length);
        }
        const std::string_view now = addLine(length);
        RunningText::News news;
        timed(state, [&] { news = text.take(now, length); });
        if (news.lines.size() != 1 || !news.isNew)
            state.SkipWithError("takes it for another");
    }
}

void addWorksInWine() {
    const auto late = std::make_shared<std::optional<ClientInWine>>();
    const WindowWork works[] = {
        {"windows: the owner's name", walkBudget,
         [](ClientInWine& client) { return client.host.currentScreenName() == "Owner"; }},
        {"windows: the room found", walkBudget,
         [](ClientInWine& client) { return client.host.findChatRoom() != noHandle; }},
        {"windows: a line said", sayBudget,
         [](ClientInWine& client) {
             client.host.sendChatLine("playing:  <b>1</b>.  <b><u>Artist</b></u> 01 - Some Title");
             return true;
         },
         [](ClientInWine& client) { return client.client.tells("entered playing:"); }},
        {"windows: 100 people read", peopleBudget,
         [](ClientInWine& client) {
             return client.host.roomPeople().listPeople().size() == people;
         }},
        {"windows: one of 100 people ignored", ignoreBudget, ignores,
         [](ClientInWine& client) { return client.client.tells("pressed Ignore Member"); }},
    };
    for (const WindowWork& work : works)
        addWork(work.name, work.budget, [=](benchmark::State& state) {
            run(state, work, late);
        })->UseManualTime();
    addWork("windows: a line until it is heard", hearBudget,
            [=](benchmark::State& state) { hear(state, late); })
        ->UseManualTime()
        ->Iterations(20)
        ->Repetitions(3);
}

} // namespace

void addWindowWorks() {
    for (const bool isRepeated : {false, true})
        addWork(isRepeated ? "windows: a line in a full text of the same"
                           : "windows: a line in a full text",
                textBudget, [=](benchmark::State& state) { takeLine(state, isRepeated); })
            ->UseManualTime();
    const char* const wine = std::getenv("LARKSPIN_WINE");
    if (!wine || !*wine)
        std::puts("Left out for want of Wine: what a client's windows take. scripts/windows-root "
                  "makes one.\n");
    else if (!*LARKSPIN_BRIDGE)
        std::puts("Left out for want of a compiler (Debian's g++-mingw-w64-i686-posix): what a "
                  "client's windows take.\n");
    else
        addWorksInWine();
}

} // namespace larkspin
