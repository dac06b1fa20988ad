// The poll loop in real time, by spans of milliseconds.
#include "platform/posix/poll_loop.h"

#include <csignal>
#include <ctime>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace larkspin {
namespace {

using namespace std::chrono_literals;

class PollLoopTest : public testing::Test {
protected:
    PollLoopTest() { EXPECT_EQ(::pipe(pipe), 0); }
    ~PollLoopTest() override {
        ::close(pipe[0]);
        ::close(pipe[1]);
    }
    void write(const char* bytes) { EXPECT_GT(::write(pipe[1], bytes, strlen(bytes)), 0); }
    char readOne() {
        char byte = 0;
        EXPECT_EQ(::read(pipe[0], &byte, 1), 1);
        return byte;
    }
    bool waitUntilTrue(const std::function<bool()>& condition) {
        loop.waitFor(condition, loop.now() + 5s);
        return condition();
    }

    PollLoop loop;
    int pipe[2]{};
    std::string log;
};

TEST_F(PollLoopTest, WaitsAsleepForTheWholeSpanWhileEventsRun) {
    int ticks = 0;
    const TimerId timer = loop.every(10ms, [&] { ++ticks; });
    loop.watch(pipe[0], [&] { log += readOne(); });
    loop.post([&] { write("x"); });
    const auto begin = loop.now();
    const std::clock_t busy = std::clock();
    loop.waitUntil(begin + 105ms);
    EXPECT_GE(loop.now(), begin + 105ms);
    EXPECT_LT((std::clock() - busy) * 1000 / CLOCKS_PER_SEC, 50);
    EXPECT_GE(ticks, 5);
    EXPECT_LE(ticks, 10);
    EXPECT_EQ(log, "x");
    loop.cancel(timer);
    loop.waitUntil(loop.now() + 20ms);
    EXPECT_LE(ticks, 10);
}

TEST_F(PollLoopTest, AHandlerThatWaitsIsOvertakenByInputAndMayStopWatching) {
    loop.watch(pipe[0], [&] {
        log += readOne();
        if (log == "a") {
            loop.waitUntil(loop.now() + 20ms);
            log += '.';
        }
        if (log.ends_with('c'))
            loop.unwatch(pipe[0]);
    });
    write("abcd");
    EXPECT_TRUE(waitUntilTrue([&] { return log.ends_with('.'); }));
    EXPECT_EQ(log, "abc.");
    loop.waitUntil(loop.now() + 5ms);
    EXPECT_EQ(log, "abc.");
}

TEST_F(PollLoopTest, ALongJobStillHearsTheInput) {
    loop.watch(pipe[0], [&] { log += readOne(); });
    write("x");
    const auto limit = loop.now() + 5s;
    int turns = 0;
    for (; log.empty() && loop.now() < limit; ++turns)
        loop.serveTurn();
    EXPECT_EQ(log, "x");
}

TEST_F(PollLoopTest, AFloodOfInputNestsNoDeeperThanTheLimit) {
    int depth = 0, deepest = 0, seen = 0;
    loop.watch(pipe[0], [&] {
        readOne();
        ++seen;
        deepest = std::max(deepest, ++depth);
        loop.waitUntil(loop.now() + 1ms);
        --depth;
    });
    write(std::string(300, 'x').c_str());
    EXPECT_TRUE(waitUntilTrue([&] { return seen == 300; }));
    EXPECT_LE(deepest, EventQueue::nestingLimit);
    EXPECT_GT(deepest, 2);
}

TEST_F(PollLoopTest, TellsWhenAPipeTakesBytesAgainAlsoDeepInNestedHandlers) {
    ::fcntl(pipe[1], F_SETFL, O_NONBLOCK);
    const std::string full(1 << 20, 'x');
    EXPECT_GT(::write(pipe[1], full.data(), full.size()), 0);
    bool told = false;
    loop.watchWritable(pipe[1], [&] {
        told = true;
        loop.unwatchWritable(pipe[1]);
    });
    loop.waitUntil(loop.now() + 5ms);
    EXPECT_FALSE(told);
    int depth = 0;
    const std::function<void()> nest = [&] {
        if (++depth < EventQueue::nestingLimit) {
            loop.post(nest);
        } else {
            std::string read(full.size(), ' ');
            EXPECT_GT(::read(pipe[0], read.data(), read.size()), 0);
        }
        loop.waitFor([&] { return told; }, loop.now() + 5s);
    };
    loop.post(nest);
    EXPECT_TRUE(waitUntilTrue([&] { return told; }));
    EXPECT_EQ(depth, EventQueue::nestingLimit);
}

TEST_F(PollLoopTest, SignalsComeHoweverDeepHandlersNest) {
    loop.onSignals({SIGUSR1}, [&] { log += 's'; });
    int depth = 0;
    const std::function<void()> nest = [&] {
        if (++depth < EventQueue::nestingLimit)
            loop.post(nest);
        else
            ::raise(SIGUSR1);
        loop.waitUntil(loop.now() + 20ms);
    };
    loop.post(nest);
    loop.waitUntil(loop.now() + 10ms);
    EXPECT_EQ(log, "s");
    EXPECT_EQ(depth, EventQueue::nestingLimit);
}

} // namespace
} // namespace larkspin
