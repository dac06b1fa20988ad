// The calls that go to a bridge, whatever comes back: nothing waits for long, nothing is believed
// that wasn't asked for, and nothing is left when it ends.
#include "platform/bridge/bridge_session.h"
#include "platform/posix/poll_loop.h"
#include "support/patience.h"
#include "support/temp_directory.h"
#include "support/virtual_loop.h"

#include <cerrno>
#include <cstdlib>
#include <gtest/gtest.h>
#include <sys/wait.h>

namespace larkspin {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;
using State = WindowSession::State;

constexpr const char* unreadable = "the bridge says what can't be read";

bool hasChildren() { // also one that nobody has waited for yet
    siginfo_t any{};
    return ::waitid(P_ALL, 0, &any, WEXITED | WNOHANG | WNOWAIT) == 0;
}

long descriptors() {
    return std::distance(fs::directory_iterator("/proc/self/fd"), {});
}

struct BridgeTest : testing::Test {
    BridgeTest() {
        script("wine", "exec " LARKSPIN_PRETEND_BRIDGE " \"$1\"");
        ::setenv("PATH", (disk.path().native() + ":" + path).c_str(), 1);
        disk.write("larkspin-bridge.exe", "");
    }
    ~BridgeTest() override { ::setenv("PATH", path.c_str(), 1); }

    void script(const std::string& name, const std::string& text) const {
        disk.write(name, "#!/bin/sh\n" + text + '\n');
        fs::permissions(disk.path() / name, fs::perms::owner_all);
    }
    std::string bridge() const { return (disk.path() / "larkspin-bridge.exe").native(); }

    bool until(const std::function<bool()>& condition) {
        loop.waitFor(condition, loop.now() + patience);
        return condition();
    }
    // Hears of it once, and nothing of the calls' own events.
    std::unique_ptr<BridgeSession> begun(BridgeLink::Patience patience = {}) {
        auto session = std::make_unique<BridgeSession>(loop, bridge(), patience);
        session->onChange([this](const std::string& why) { told.push_back(why); });
        session->begin();
        EXPECT_EQ(session->state(), State::beginning);
        EXPECT_EQ(told, std::vector<std::string>{});
        return session;
    }
    std::unique_ptr<BridgeSession> up(BridgeLink::Patience patience = {}) {
        auto session = begun(patience);
        EXPECT_TRUE(until([&] { return session->state() == State::up; }));
        EXPECT_EQ(told, std::vector<std::string>{""});
        told.clear();
        return session;
    }
    void expectEnd(const BridgeSession& session, const std::string& why) {
        EXPECT_TRUE(until([&] { return !told.empty(); }));
        EXPECT_EQ(told, std::vector{why});
        EXPECT_EQ(session.state(), State::off);
        expectNothingLeft();
        told.clear();
    }
    void expectNothingLeft() {
        EXPECT_TRUE(until([] { return !hasChildren(); }));
        EXPECT_EQ(descriptors(), opened);
    }
    void expectNoMore(BridgeSession& session) { // is told once it ends
        session.end();
        expectNothingLeft();
        EXPECT_EQ(told, std::vector<std::string>{});
    }

    const std::string path = std::getenv("PATH");
    TempDirectory disk;
    PollLoop loop;
    long opened = descriptors();
    std::vector<std::string> told;
};

TEST_F(BridgeTest, SaysWhyItCouldntBegin) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"ends", "wine couldn't run the bridge"},
        {"garbage", unreadable},
        {"another version", "the bridge is another version than larkspin"},
        {"no display", "wine has no display"}};
    for (const auto& [how, why] : cases) {
        SCOPED_TRACE(how);
        disk.write("larkspin-bridge.exe", how);
        expectEnd(*begun(), why);
    }
    disk.write("larkspin-bridge.exe", "silent");
    expectEnd(*begun({.greeting = 50ms}), "the bridge doesn't answer");
    script("wine", "exec /nonexistent");
    expectEnd(*begun(), "wine couldn't run the bridge");
    ::setenv("PATH", "/nonexistent", 1);
    expectEnd(*begun(), "wine isn't installed");
    BridgeSession without(loop, "");
    without.onChange([this](const std::string& why) { told.push_back(why); });
    without.begin();
    expectEnd(without, "larkspin-bridge.exe isn't there: the package larkspin-windows has it, or "
                       "a build with its compiler");
}

TEST_F(BridgeTest, EndsWithoutAWordAndBeginsAnew) {
    const auto session = begun();
    session->begin(); // nothing more
    session->end();
    EXPECT_EQ(session->state(), State::off);
    EXPECT_EQ(session->calls().caption(1), "");
    session->begin();
    EXPECT_TRUE(until([&] { return session->state() == State::up; }));
    EXPECT_EQ(session->calls().caption(1), "the name");
    EXPECT_EQ(std::exchange(told, {}), std::vector<std::string>{""}) << "that it is up";
    expectNoMore(*session);
}

TEST_F(BridgeTest, OneThatDoesntEndIsKilled) {
    disk.write("larkspin-bridge.exe", "stubborn");
    VirtualLoop clock;
    EndingBridges ending(clock);
    auto process = BridgeProcess::start((disk.path() / "wine").native(), bridge());
    process->takePipes(); // and closes them
    ending.add(std::move(process));
    clock.waitUntil(clock.now() + 2s);
    EXPECT_TRUE(hasChildren());
    clock.waitUntil(clock.now() + 2s);
    EXPECT_TRUE(comes([&] {
        clock.waitUntil(clock.now() + 1s);
        return !hasChildren();
    }));
    EXPECT_TRUE(clock.hasNothingToDo());
}

TEST_F(BridgeTest, GivesWhatItAnswersAndNoMore) {
    const auto session = up();
    WindowCalls& calls = session->calls();
    EXPECT_EQ(calls.caption(1), "the name");
    EXPECT_EQ(calls.caption(7), "") << "longer than any";
    const auto found = calls.walk({.path = {"text"}, .className = "two", .holds = {"a", "b"}});
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0].text, "text");
    EXPECT_EQ(found[0].holds, (std::vector<HostHandle>{0, 9}));
    EXPECT_EQ(found[1].window, 8u);
    for (const std::string wrong : {"too many", "too few of what they hold", "too long", "none"})
        EXPECT_EQ(calls.walk({.path = {""}, .className = wrong, .holds = {"a", "b"}}).size(), 0u)
            << wrong;

    const RowRecord record{28, 6, 16};
    EXPECT_EQ(calls.rows(1, record, 3),
              (std::vector<std::string>{"2806" + std::string(12, '\0'), "", std::string(16, 'x')}));
    EXPECT_EQ(calls.rows(1, record, 2).size(), 0u);
    EXPECT_EQ(calls.rows(2, record, 5).size(), 0u);
    EXPECT_EQ(calls.send(1, 2, 3, -7), -1);
    EXPECT_TRUE(calls.post(1, 0, 0, 0));
    EXPECT_FALSE(calls.post(0, 0, 0, 0));
    EXPECT_EQ(calls.registryValue("none", "x"), std::nullopt);
    EXPECT_EQ(calls.registryValue("some", "x").value().bytes, "some");
    expectNoMore(*session);
}

TEST_F(BridgeTest, WhatCantBeSoEndsIt) {
    const std::vector<std::pair<HostHandle, std::string>> cases{
        {3, "the bridge has ended"}, {4, unreadable}, {5, unreadable}, {6, unreadable}};
    for (const auto& [window, why] : cases) {
        SCOPED_TRACE(window);
        const auto session = up();
        EXPECT_EQ(session->calls().caption(window), "");
        EXPECT_EQ(told, std::vector<std::string>{}) << "that is an event of its own";
        EXPECT_EQ(session->calls().caption(1), "");
        expectEnd(*session, why);
    }
    const auto session = up();
    session->calls().caption(8); // which it answers twice
    expectEnd(*session, unreadable);

    session->begin();
    EXPECT_TRUE(until([&] { return session->state() == State::up; }));
    told.clear();
    EXPECT_EQ(session->calls().caption(11), "the name");
    EXPECT_EQ(session->calls().caption(1), ""); // this program isn't ended by it
    disk.write("go", "");
    expectEnd(*session, "the bridge has ended");
}

// If each question were waited for, this would take ten minutes.
TEST_F(BridgeTest, OneThatHangsIsntAskedUntilItAnswers) {
    const auto session = up();
    const Nanoseconds before = loop.now();
    EXPECT_EQ(session->calls().caption(2), "");
    EXPECT_GE(loop.now() - before, 600ms);
    for (int each = 0; each < 1000; ++each)
        EXPECT_EQ(session->calls().caption(1), "");
    EXPECT_LT(loop.now() - before, patience);
    disk.write("go", "");
    EXPECT_TRUE(comes([&] { return session->calls().caption(1) == "the name"; }));
    expectNoMore(*session);
}

TEST_F(BridgeTest, OneThatNeverAnswersEnds) {
    const auto session = up({.lateAnswer = 50ms});
    EXPECT_EQ(session->calls().caption(2), "");
    expectEnd(*session, "the bridge doesn't answer");
}

TEST_F(BridgeTest, OneThatDoesntReadHoldsUpNobody) {
    disk.write("larkspin-bridge.exe", "deaf");
    const auto session = up();
    session->calls().sendText(1, 12, std::string(1'000'000, 'x'));
    session->calls().sendText(1, 12, std::string(1'000'000, 'x'));
    EXPECT_EQ(session->calls().caption(1), "");
    disk.write("go", "");
    EXPECT_TRUE(until([&] { return session->calls().caption(1) == "the name"; }));
    expectNoMore(*session);
}

TEST_F(BridgeTest, WatchesWithEachBridgeAnew) {
    const auto session = std::make_unique<BridgeSession>(loop, bridge());
    std::vector<std::string> seen;
    const auto watch = [&](const std::string& className) {
        session->calls().watch({.windows = {.className = className, .holds = {"a"}}},
                               [&](const WatchedText& text) { seen.push_back(text.caption); });
    };
    watch("first");
    session->begin();
    session->end(); // has seen nothing yet
    for (int begun = 0; begun < 2; ++begun) {
        session->begin();
        EXPECT_TRUE(until([&] { return !seen.empty(); }));
        EXPECT_EQ(seen, std::vector<std::string>{"first"});
        seen.clear();
        session->calls().caption(3); // its end
        EXPECT_TRUE(until([&] { return !seen.empty(); }));
        EXPECT_EQ(seen, std::vector<std::string>{""}) << "no window any more";
        seen.clear();
    }
    session->begin();
    EXPECT_TRUE(until([&] { return seen.size() == 1; }));
    watch("second");
    EXPECT_TRUE(until([&] { return seen.size() == 2; }));
    EXPECT_EQ(seen.back(), "second") << "and nothing of the one before";

    session->calls().caption(2);
    watch("third"); // can't be asked yet
    disk.write("go", "");
    EXPECT_TRUE(until([&] { return seen.size() == 3; }));
    session->calls().watch({}, {});
    session->calls().caption(10);
    EXPECT_TRUE(until([&] { return session->calls().caption(1) == "the name"; }));
    loop.waitUntil(loop.now() + 100ms);
    EXPECT_EQ(seen, (std::vector<std::string>{"first", "second", "third"}));
    expectNoMore(*session);
}

TEST_F(BridgeTest, TellsOnlyTheNewestThatIsSeenAndNotInAQuestion) {
    const auto session = up();
    std::vector<std::uint32_t> seen;
    session->calls().watch({.windows = {.className = "x", .holds = {"a"}}},
                           [&](const WatchedText& text) { seen.push_back(text.length); });
    EXPECT_EQ(session->calls().caption(10), "the name");
    EXPECT_EQ(seen, std::vector<std::uint32_t>{});
    EXPECT_TRUE(until([&] { return !seen.empty(); }));
    EXPECT_EQ(seen, std::vector<std::uint32_t>{1000});

    EXPECT_EQ(session->calls().caption(9), ""); // a flood that never ends
    int turns = 0;
    const TimerId timer = loop.every(1ms, [&] { ++turns; });
    const Nanoseconds before = loop.now();
    EXPECT_TRUE(until([&] { return turns > 100; }));
    EXPECT_TRUE(until([&] { return seen.size() > 3; }));
    EXPECT_LE(seen.size(), static_cast<std::size_t>((loop.now() - before) / 50ms) + 3);
    loop.cancel(timer);
    expectNoMore(*session);
}

} // namespace
} // namespace larkspin
