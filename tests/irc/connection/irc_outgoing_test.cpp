// What may go to a server, and when.
#include "irc/connection/irc_outgoing.h"

#include "support/virtual_loop.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

using namespace std::chrono_literals;
using Kind = IrcOutgoing::Kind;

struct Wire {
    VirtualLoop loop;
    Nanoseconds begun = loop.now();
    std::string sent; // since it was last asked
    IrcOutgoing outgoing{loop, [this](const std::string& line) { sent += line; }};

    void add(Kind kind, std::string_view lines) {
        for (const char line : lines)
            outgoing.add(kind, std::string(1, line));
    }
    std::string sentUntil(Nanoseconds span) {
        loop.waitUntil(begun + span);
        return std::exchange(sent, "");
    }
};

TEST(IrcOutgoing, GoesAtOnceAndThenALineInTwoSeconds) {
    Wire wire;
    wire.add(Kind::said, "abcdefgh");
    EXPECT_EQ(wire.sentUntil(0s), "abcde");
    EXPECT_EQ(wire.sentUntil(1999ms), "");
    EXPECT_EQ(wire.sentUntil(2s), "f");
    EXPECT_EQ(wire.sentUntil(4s), "g");
    EXPECT_EQ(wire.outgoing.waiting(Kind::said), 1u);
    EXPECT_EQ(wire.sentUntil(60s), "h");
    EXPECT_TRUE(wire.loop.isIdle());
    wire.add(Kind::said, "ijklmn");
    EXPECT_EQ(wire.sentUntil(60s), "ijklm");
}

TEST(IrcOutgoing, TakesLongerForLongLines) {
    Wire wire;
    const std::string line(512, 'x'); // six seconds
    for (int count = 0; count < 3; ++count)
        wire.outgoing.add(Kind::typed, line);
    EXPECT_EQ(wire.sentUntil(1999ms), line);
    EXPECT_EQ(wire.sentUntil(2s), line);
    EXPECT_EQ(wire.sentUntil(7999ms), "");
    EXPECT_EQ(wire.sentUntil(8s), line);
    wire.outgoing.add(Kind::typed, std::string(10'000, 'x'));
    EXPECT_EQ(wire.sentUntil(60s).size(), 10'000u);
}

TEST(IrcOutgoing, LetsTheOwnerGoFirstAndTheConnectionBeforeHim) {
    Wire wire;
    wire.add(Kind::said, "12345abc");
    wire.add(Kind::typed, "ABCDE");
    wire.add(Kind::protocol, "p");
    EXPECT_EQ(wire.sentUntil(60s), "12345pABaCDbEc");
}

TEST(IrcOutgoing, SaysNoMoreInAMinuteThanIsWanted) {
    Wire wire;
    wire.outgoing.limitSaid(2);
    wire.add(Kind::said, "a");
    EXPECT_EQ(wire.sentUntil(30s), "a");
    wire.add(Kind::said, "bcdefg");
    wire.add(Kind::typed, "T");
    EXPECT_EQ(wire.sentUntil(59'999ms), "bT");
    EXPECT_EQ(wire.sentUntil(60s), "c");
    EXPECT_EQ(wire.sentUntil(90s), "d");
    wire.outgoing.limitSaid(1);
    EXPECT_EQ(wire.sentUntil(149s), "");
    EXPECT_EQ(wire.sentUntil(150s), "e");
    wire.outgoing.limitSaid(-1);
    EXPECT_EQ(wire.sentUntil(150s), "fg");
}

TEST(IrcOutgoing, ForgetsWhatWaits) {
    Wire wire;
    wire.add(Kind::typed, "abcdefg");
    wire.add(Kind::said, "hi");
    wire.outgoing.drop(Kind::typed);
    EXPECT_EQ(wire.sentUntil(2s), "abcdeh");
    wire.outgoing.clear();
    EXPECT_TRUE(wire.loop.isIdle());
    wire.add(Kind::typed, "ABCDEF");
    EXPECT_EQ(wire.sentUntil(2s), "ABCDE");
}

TEST(IrcOutgoing, TellsAsEachGoes) {
    Wire wire;
    wire.outgoing.add(Kind::said, "a", [&wire] {
        wire.sent += '!';
        wire.add(Kind::said, "c");
        wire.sent += '.';
    });
    wire.add(Kind::said, "b");
    EXPECT_EQ(wire.sentUntil(0s), "a!.cb");
    wire.outgoing.add(Kind::said, "", [&wire] { wire.sent += '!'; });
    EXPECT_EQ(wire.sentUntil(60s), "");
}

TEST(IrcOutgoing, IsBounded) {
    Wire wire;
    wire.add(Kind::said, std::string(5 + IrcOutgoing::mostWaiting, 'x'));
    EXPECT_FALSE(wire.outgoing.add(Kind::said, "x"));
    EXPECT_TRUE(wire.outgoing.add(Kind::typed, "x"));
}

} // namespace
} // namespace larkspin
