// What may go to a server, and when.
#include "irc/connection/irc_outgoing.h"

#include "support/virtual_loop.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

using namespace std::chrono_literals;
using Kind = IrcOutgoing::Kind;

struct IrcOutgoingTest : testing::Test {
    VirtualLoop loop;
    Nanoseconds begun = loop.now();
    std::string sent; // since it was last asked
    // Nothing that asks the server for an answer is among it; none is given, so that the pace stays
    // what it is at first.
    IrcOutgoing outgoing{loop, [this](const std::string& line) {
                             if (!line.starts_with("PING"))
                                 sent += line;
                         }};

    void add(Kind kind, std::string_view lines) {
        for (const char line : lines)
            outgoing.add(kind, std::string(1, line));
    }
    std::string sentUntil(Nanoseconds span) {
        loop.waitUntil(begun + span);
        return std::exchange(sent, "");
    }
};

TEST_F(IrcOutgoingTest, GoesAtOnceAndThenALineInTwoSecondsAndLeavesRoomForTwoThatAreTyped) {
    add(Kind::said, "abcdefgh");
    EXPECT_EQ(sentUntil(0s), "abc");
    EXPECT_EQ(sentUntil(3999ms), ""); // a question to the server took a place
    EXPECT_EQ(sentUntil(4s), "d");
    EXPECT_EQ(sentUntil(6s), "e");
    add(Kind::typed, "AB");
    EXPECT_EQ(sentUntil(6s), "AB");
    EXPECT_EQ(sentUntil(7999ms), "");
    EXPECT_EQ(sentUntil(60s), "fgh");
    EXPECT_TRUE(loop.hasNothingToDo());
    add(Kind::said, "ijk");
    EXPECT_EQ(sentUntil(60s), "ijk");
}

TEST_F(IrcOutgoingTest, TakesLongerForLongLines) {
    const std::string line(512, 'x'); // seven seconds
    for (int count = 0; count < 3; ++count)
        outgoing.add(Kind::typed, line);
    EXPECT_EQ(sentUntil(3999ms), line);
    EXPECT_EQ(sentUntil(4s), line);
    EXPECT_EQ(sentUntil(10999ms), "");
    EXPECT_EQ(sentUntil(11s), line);
    outgoing.add(Kind::said, std::string(10'000, 'x'));
    EXPECT_EQ(sentUntil(60s).size(), 10'000u);
}

TEST_F(IrcOutgoingTest, LetsTheOwnerGoFirstAndTheConnectionBeforeHim) {
    add(Kind::said, "12345abc");
    add(Kind::typed, "ABCDE");
    add(Kind::protocol, "p");
    EXPECT_EQ(sentUntil(60s), "123ApBC4DE5abc");
}

TEST_F(IrcOutgoingTest, SaysNoMoreInAMinuteThanIsWanted) {
    outgoing.limitSaid(2);
    add(Kind::said, "a");
    EXPECT_EQ(sentUntil(30s), "a");
    add(Kind::said, "bcdefg");
    add(Kind::typed, "T");
    EXPECT_EQ(sentUntil(59'999ms), "bT");
    EXPECT_EQ(sentUntil(60s), "c");
    EXPECT_EQ(sentUntil(90s), "d");
    outgoing.limitSaid(1);
    EXPECT_EQ(sentUntil(149s), "");
    EXPECT_EQ(sentUntil(150s), "e");
    outgoing.limitSaid(-1);
    EXPECT_EQ(sentUntil(150s), "fg");
}

TEST_F(IrcOutgoingTest, ForgetsWhatWaits) {
    add(Kind::typed, "abcdefg");
    add(Kind::said, "h");
    add(Kind::recited, "i");
    outgoing.dropSaid();
    EXPECT_EQ(sentUntil(9s), "abcdefg");
    outgoing.clear();
    EXPECT_TRUE(loop.hasNothingToDo());
    add(Kind::typed, "ABCDEF");
    EXPECT_EQ(sentUntil(2s), "ABCDE");
}

TEST_F(IrcOutgoingTest, NothingWaitsForALineThatIsForgotten) {
    const std::string line = "PRIVMSG #c " + std::string(500, 'x'); // seven seconds
    add(Kind::said, "ab");
    outgoing.add(Kind::typed, line);
    add(Kind::said, "c");
    outgoing.revise([](const std::string& waiting) { return waiting.size() < 500; });
    EXPECT_EQ(sentUntil(0s), "abc");
}

TEST_F(IrcOutgoingTest, AnAnswerGoesBeforeWhatIsRecited) {
    add(Kind::recited, "abcdefg");
    add(Kind::said, "A");
    const std::string sent = sentUntil(60s);
    EXPECT_LT(sent.find('A'), sent.find('d')) << sent;
}

TEST_F(IrcOutgoingTest, TellsAsEachGoes) {
    outgoing.add(Kind::said, "a", [this] {
        add(Kind::said, "c");
        return std::string("@tag ");
    });
    add(Kind::said, "b");
    EXPECT_EQ(sentUntil(0s), "@tag acb");
    outgoing.add(Kind::said, "", [] { return std::string("!"); });
    EXPECT_EQ(sentUntil(60s), "");
}

TEST_F(IrcOutgoingTest, IsBounded) {
    add(Kind::said, std::string(5 + IrcOutgoing::mostWaiting, 'x'));
    EXPECT_FALSE(outgoing.add(Kind::said, "x"));
    EXPECT_TRUE(outgoing.add(Kind::typed, "x"));
}

} // namespace
} // namespace larkspin
