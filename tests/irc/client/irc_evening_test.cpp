// An evening in two rooms and in private, while the owner sits in one of them.
#include "support/irc_machine.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace larkspin {
namespace {

TEST_F(InMusic, AnEveningIsKeptWholeAndEachLineAtItsTime) {
    constexpr int lines = 9'999, third = lines / 3;
    joined("#den");
    const std::time_t begin = loop.moment();
    std::string told;
    std::size_t inFront = 0;
    for (int line = 0; line < lines; ++line) {
        const std::tm at = loop.dateOf(begin - lines + line);
        char time[64] = "";
        std::strftime(time, sizeof time, "@time=%Y-%m-%dT%H:%M:%S.000Z ", &at);
        static const char* const targets[] = {"#music", "#den", "Owner"};
        const bool callsHim = line % 300 == 1; // in #den
        told += std::string(time) + (line % 2 == 0 ? ":ann!a@h" : ":bob!b@h") + " PRIVMSG " +
                targets[line % 3] + " :" + (callsHim ? "owner, " : "") + "line " +
                std::to_string(line) + "\r\n";
        if (line % 100 == 98 || line + 1 == lines) {
            const std::string seen = this->told(std::exchange(told, {}));
            inFront += static_cast<std::size_t>(std::ranges::count(seen, '\n'));
        }
    }
    const Conversation &music = *conversations.numbered(1), &den = *conversations.numbered(2),
                       &ann = *conversations.numbered(3), &bob = *conversations.numbered(4);
    // Those of the room, the private ones, and those in which he is called.
    EXPECT_EQ(inFront, std::size_t{2 * third + lines / 300 + 1});
    EXPECT_EQ(den.unread(), third);
    EXPECT_EQ(den.unreadForOwner(), lines / 300 + 1);
    EXPECT_EQ(ann.unreadForOwner() + bob.unreadForOwner(), third);
    EXPECT_EQ(music.unread(), 0);
    int line = 1;
    for (const KeptLine& kept : den.lines()) {
        if (kept.isProgramsWord())
            continue;
        ASSERT_TRUE(kept.text.ends_with("line " + std::to_string(line))) << kept.text;
        ASSERT_EQ(kept.at, begin - lines + line) << kept.text;
        line += 3;
    }
    EXPECT_EQ(line, lines + 1);
    const std::string shownLast = seenOf([&] { irc.enterRoom("den"); });
    EXPECT_TRUE(shownLast.ends_with("line 9997\n")) << shownLast;
    EXPECT_EQ(den.unread(), 0);
    EXPECT_EQ(stampOf(den.lines().back(), loop), "19:04");
    EXPECT_EQ(state().HScroll2, 50);
}

} // namespace
} // namespace larkspin
