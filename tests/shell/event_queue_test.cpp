#include "shell/event_queue.h"

#include "support/virtual_loop.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace larkspin {
namespace {

using namespace std::chrono_literals;

struct EventQueueTest : testing::Test {
    Task logs(char letter) {
        return [this, letter] { log += letter; };
    }
    std::string after(Nanoseconds span) {
        loop.waitUntil(loop.now() + span);
        return log;
    }

    VirtualLoop loop;
    std::string log;
};

TEST_F(EventQueueTest, EqualMomentsFireInTheOrderInWhichTheyWereSet) {
    loop.every(2s, logs('b'));
    loop.every(1s, logs('a'));
    loop.every(2s, logs('c'));
    loop.post([this] { loop.post(logs('z')); });
    loop.post(logs('x'));
    loop.serveTurn();
    EXPECT_EQ(log, "x");
    EXPECT_EQ(after(4s), "xzabcaabca");
    EventQueue queue;
    queue.once(0s, 0s, [&] {
        log = "1";
        queue.once(0s, 0s, logs('2'));
    });
    EXPECT_TRUE(queue.runDue(0s));
    EXPECT_EQ(log, "1") << "what is set in a turn belongs to a later one";
    EXPECT_TRUE(queue.runDue(0s));
    queue.every(100ms, 0s, logs('.'));
    EXPECT_FALSE(queue.runDue(99ms));
    EXPECT_TRUE(queue.runDue(1050ms));
    EXPECT_FALSE(queue.runDue(1099ms));
    EXPECT_EQ(log, "12.") << "what was missed is not made up";
    EXPECT_EQ(queue.nextDue(), Nanoseconds(1100ms));
}

TEST_F(EventQueueTest, AHandlerThatWaitsIsOvertakenAlsoByItsOwnTimer) {
    loop.every(1s, [this] {
        log += '(';
        if (log == "(")
            after(2500ms);
        log += ')';
    });
    loop.every(2s, logs('.'));
    EXPECT_EQ(after(2s), "(.()())");
}

TEST_F(EventQueueTest, HandlersCancelThemselvesAndOthersAndSetNewOnes) {
    TimerId self{}, other{};
    self = loop.every(1s, [&] {
        log += 's';
        for (const TimerId timer : {self, other, other, TimerId::none})
            loop.cancel(timer);
        loop.every(1s, logs('n'));
    });
    other = loop.every(1s, logs('o'));
    EXPECT_EQ(after(3s), "snn");
}

TEST_F(EventQueueTest, AFloodNestsToTheLimitAndIsServedInOrder) {
    int depth = 0, deepest = 0;
    std::vector<int> begun;
    for (int number = 0; number < 200; ++number)
        loop.post([&, number] {
            begun.push_back(number);
            deepest = std::max(deepest, ++depth);
            after(1ms);
            --depth;
        });
    after(1s);
    EXPECT_EQ(deepest, EventQueue::nestingLimit);
    EXPECT_EQ(begun.size(), 200u);
    EXPECT_TRUE(std::ranges::is_sorted(begun));
    EXPECT_EQ(loop.atWork().depth, 0);
}

TEST_F(EventQueueTest, WhatIsPostedBeforeTheSleepRunsBeforeIt) {
    bool changed = true;
    loop.beforeSleep([&] {
        log += 'h';
        if (std::exchange(changed, false))
            loop.post(logs('p'));
    });
    loop.once(1s, logs('t'));
    EXPECT_EQ(after(1s), "hpht");
}

} // namespace
} // namespace larkspin
