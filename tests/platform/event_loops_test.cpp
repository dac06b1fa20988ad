// The event loops of the front ends in real time, by spans of milliseconds: each owes the program
// the same.
#include "support/both_loops.h"
#include "support/patience.h"
#include "support/pipe.h"

#include <csignal>
#include <ctime>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>
#include <utility>

namespace larkspin {
namespace {

using namespace std::chrono_literals;

struct EventLoopsTest : testing::TestWithParam<bool> {
    char readOne() {
        char byte = 0;
        EXPECT_EQ(::read(pipe.out(), &byte, 1), 1);
        return byte;
    }
    bool waitUntilTrue(const std::function<bool()>& condition) {
        loop.waitFor(condition, loop.now() + patience);
        return condition();
    }
    // Handlers that wait inside each other to the limit; the innermost does this first.
    void nest(const Task& innermost, const std::function<bool()>& condition) {
        int depth = 0;
        const std::function<void()> next = [&] {
            ++depth < EventQueue::nestingLimit ? loop.post(next) : innermost();
            EXPECT_TRUE(waitUntilTrue(condition));
        };
        loop.post(next);
        EXPECT_TRUE(waitUntilTrue(condition));
        EXPECT_EQ(depth, EventQueue::nestingLimit);
    }

    Pipe pipe;
    const std::unique_ptr<WatchingLoop> made = makeLoop(GetParam());
    WatchingLoop& loop = *made;
    std::string log;
};

INSTANTIATE_TEST_SUITE_P(OnPollAndOnQt, EventLoopsTest, testing::Bool());

TEST_P(EventLoopsTest, HearsNoDescriptorThatWasForgottenInTheSameTurn) {
    Pipe other;
    loop.watch(pipe.out(), [&] { log += readOne(), loop.unwatch(other.out()); });
    loop.watch(other.out(), [&] { log += other.readNow(), loop.unwatch(pipe.out()); });
    pipe.write("x");
    other.write("y");
    EXPECT_TRUE(waitUntilTrue([&] { return !log.empty(); }));
    loop.waitUntil(loop.now() + 2ms);
    EXPECT_EQ(log.size(), 1u) << log;
}

TEST_P(EventLoopsTest, WaitsAsleepForTheWholeSpanWhileEventsRun) {
    int ticks = 0;
    const auto begin = loop.now();
    loop.every(10ms, [&] { ++ticks; });
    loop.watch(pipe.out(), [&] { log += readOne(); });
    loop.post([&] { pipe.write("x"); });
    const std::clock_t busy = std::clock();
    loop.waitUntil(begin + 105ms);
    EXPECT_GE(loop.now(), begin + 105ms);
    EXPECT_LT((std::clock() - busy) * 1000 / CLOCKS_PER_SEC, 50);
    EXPECT_GE(ticks, 1); // those that a busy machine has made it miss aren't made up for
    EXPECT_LE(ticks, (loop.now() - begin) / 10ms); // more than 10 where it has woken up late
    EXPECT_EQ(log, "x");
}

TEST_P(EventLoopsTest, AHandlerThatWaitsIsOvertakenByInputAndMayStopWatching) {
    loop.watch(pipe.out(), [&] {
        log += readOne();
        if (log == "a") {
            loop.waitUntil(loop.now() + 20ms);
            log += '.';
        }
        if (log.ends_with('c'))
            loop.unwatch(pipe.out());
    });
    pipe.write("abcd");
    EXPECT_TRUE(waitUntilTrue([&] { return log.ends_with('.'); }));
    EXPECT_EQ(log, "abc.");
    loop.waitUntil(loop.now() + 5ms);
    EXPECT_EQ(log, "abc.");
}

TEST_P(EventLoopsTest, WhatWasReadInTheWaitOfAHandlerIsReadOnce) {
    Pipe other;
    loop.watch(pipe.out(), [&] {
        log += readOne();
        loop.waitUntil(loop.now() + 20ms);
    });
    loop.watch(other.out(), [&] {
        log += other.readNow();
        log += '.';
    });
    pipe.write("a");
    other.write("b");
    EXPECT_TRUE(waitUntilTrue([&] { return log.size() >= 3; }));
    loop.waitUntil(loop.now() + 5ms);
    EXPECT_EQ(log.size(), 3u) << log;
}

TEST_P(EventLoopsTest, ALongJobStillHearsTheInputAndDoesAtEachStepWhatIsDue) {
    loop.watch(pipe.out(), [&] { log += readOne(); });
    pipe.write("x");
    for (const auto limit = loop.now() + patience; log.empty() && loop.now() < limit;)
        loop.serveTurn();
    for (int step = 0; step < 3; ++step) {
        loop.post([&] { log += '.'; });
        loop.serveTurn();
        EXPECT_EQ(std::exchange(log, ""), step == 0 ? "x." : ".");
    }
}

TEST(QtLoop, ShowsNowAndThenWhatALongJobHasChanged) {
    const auto loop = makeLoop(true);
    int shown = 0;
    loop->beforeSleep([&] { ++shown; });
    for (const auto limit = loop->now() + patience; shown < 3 && loop->now() < limit;)
        loop->serveTurn();
    EXPECT_EQ(shown, 3);
}

TEST_P(EventLoopsTest, AFloodOfInputNestsNoDeeperThanTheLimit) {
    int depth = 0, deepest = 0, seen = 0;
    loop.watch(pipe.out(), [&] {
        readOne();
        ++seen;
        deepest = std::max(deepest, ++depth);
        loop.waitUntil(loop.now() + 1ms);
        --depth;
    });
    pipe.write(std::string(300, 'x'));
    EXPECT_TRUE(waitUntilTrue([&] { return seen == 300; }));
    EXPECT_LE(deepest, EventQueue::nestingLimit);
    EXPECT_GT(deepest, 2);
}

TEST_P(EventLoopsTest, TellsWhenAPipeTakesBytesAgainAlsoDeepInNestedHandlers) {
    ::fcntl(pipe.in(), F_SETFL, O_NONBLOCK);
    EXPECT_FALSE(pipe.write(std::string(1 << 20, 'x')));
    bool told = false;
    loop.watchWritable(pipe.in(), [&] {
        told = true;
        loop.unwatchWritable(pipe.in());
    });
    loop.waitUntil(loop.now() + 5ms);
    EXPECT_FALSE(told);
    nest([&] { pipe.readNow(); }, [&] { return told; });
}

TEST_P(EventLoopsTest, SignalsComeHoweverDeepHandlersNest) {
    loop.onSignals({SIGUSR1}, [&] { log += 's'; });
    nest([] { ::raise(SIGUSR1); }, [&] { return !log.empty(); });
    EXPECT_EQ(log, "s");
}

} // namespace
} // namespace larkspin
