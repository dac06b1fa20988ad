// How fast a recital goes on each kind of server, and that nothing of it is lost.
#include "support/irc_recital.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

using namespace std::chrono_literals;

TEST(IrcPace, ARecitalArrivesWholeAndCommandsAreObeyedInItsMiddle) {
    for (const IrcPenalties& family : ircPenalties) {
        SCOPED_TRACE(family.name);
        const IrcRecital busy = reciteOn(family, 16'300ms), quiet = reciteOn(family, 100s);
        EXPECT_EQ(busy.lines, 150U);
        EXPECT_EQ(quiet.lines, 150U);
        EXPECT_EQ(busy.connections, 1);
        EXPECT_EQ(quiet.connections, 1);
        EXPECT_LT(busy.latestCommand, 1s);
        EXPECT_LT(quiet.latestCommand, 1s);
        EXPECT_LT(busy.latestAnswer, 20s);
        EXPECT_LT(quiet.whole, family.longestRecital);
    }
}

} // namespace
} // namespace larkspin
