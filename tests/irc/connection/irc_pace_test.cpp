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
        for (const std::chrono::milliseconds betweenCommands :
             {1'100ms, 5'000ms, 16'300ms, quiet}) {
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

} // namespace
} // namespace larkspin
