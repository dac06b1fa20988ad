// How fast a recital goes on each kind of server, and that nothing of it is lost.
#include "support/irc_recital.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds quiet = 100s; // between commands

TEST(IrcPace, ARecitalArrivesWholeAndCommandsAreObeyedInItsMiddle) {
    for (const IrcPenalties& family : ircPenalties) {
        SCOPED_TRACE(family.name);
        for (const std::chrono::milliseconds betweenCommands : {1'100ms, 16'300ms, quiet}) {
            SCOPED_TRACE(betweenCommands.count());
            const IrcRecital recital = reciteOn(family, betweenCommands);
            EXPECT_EQ(recital.lines, 150U);
            EXPECT_EQ(recital.connections, 1);
            EXPECT_LT(recital.latestCommand, 600ms);
            if (betweenCommands > 10s)
                EXPECT_LT(recital.latestAnswer, 20s);
            if (betweenCommands == quiet)
                EXPECT_LT(recital.whole, family.longestRecital);
        }
    }
}

// As when a long text is pasted.
TEST(IrcPace, WhatIsTypedAtOnceArrivesWholeAndAsFastAsAServerTakesIt) {
    for (const IrcPenalties& family : ircPenalties) {
        SCOPED_TRACE(family.name);
        IrcMachine machine;
        machine.server.family = &family;
        machine.server.capabilities = family.capabilities;
        machine.begin();
        machine.advance(60s);
        const std::string sent =
            machine.sentOf([&] { machine.type(150); }, family.longestRecital + 20s);
        EXPECT_NE(sent.find("PRIVMSG #music :typed 149\n"), sent.npos);
        EXPECT_EQ(std::ranges::count(sent, 't'), 150);
        EXPECT_EQ(machine.server.opened, 1);
    }
}

} // namespace
} // namespace larkspin
