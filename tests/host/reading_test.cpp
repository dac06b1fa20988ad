// How the owner reads conversations in a window, whichever front end draws it.
#include "host/conversations.h"
#include "host/readable_color.h"
#include "host/reading.h"
#include "support/virtual_machine.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

struct ReadingTest : testing::Test {
    void keep(Conversation& in, const std::string& text,
              KeptLine::Kind kind = KeptLine::Kind::said) {
        conversations.keep(
            in,
            {.kind = kind, .speaker = "ann", .text = text, .isForOwner = text.starts_with("Jo")});
    }
    void go(Conversation& to, const Reading::Spot& left = {}) {
        reading.leave(left);
        conversations.enter(to);
        spot = reading.enter(to);
        reading.markUnread(to);
    }
    // How each line looks: said, told, passed or a mark; with ! where it calls him.
    std::string shown(const Conversation& in, std::size_t first = 0, std::size_t end = 99) {
        std::string all;
        for (const ShownLine& line : reading.lines(in, first, std::min(end, in.lines().size())))
            all += std::string(1, "stpm"[static_cast<int>(line.look)]) +
                   (line.callsOwner ? "! " : " ") + line.text + '\n';
        return all;
    }
    VirtualLoop loop;
    ChatLines lines{loop};
    Conversations conversations{loop, lines, "lobby"};
    Conversation& den = conversations.add({Conversation::Kind::room, 1, "#den"});
    Conversation& ann = conversations.add({Conversation::Kind::person, 1, "ann"});
    Reading reading{conversations, loop};
    Reading::Spot spot;
};

TEST_F(ReadingTest, LinesLookAsTheyAreMeant) {
    using Kind = KeptLine::Kind;
    for (Conversation* const in : {&den, &ann}) {
        keep(*in, "hi");
        keep(*in, "Jo: hi");
        keep(*in, "waves", Kind::done);
        keep(*in, "bob comes in", Kind::news);
    }
    EXPECT_EQ(shown(den), "s hi\ns! Jo: hi\np * ann waves\nt bob comes in\n");
    EXPECT_EQ(shown(ann), "s hi\ns Jo: hi\np * ann waves\nt bob comes in\n");
}

TEST_F(ReadingTest, WhatIsUnreadAndWhatCameFromElsewhereStandInTheirPlaces) {
    go(den);
    keep(den, "one");
    keep(ann, "psst");
    reading.pass(ann, ann.lines().back());
    keep(den, "two");
    go(conversations.home());
    keep(den, "three");
    go(den);
    EXPECT_EQ(shown(den), "s one\np ann whispers: psst\ns two\nm unread\ns three\n");
    EXPECT_EQ(shown(den, 1, 2), "p ann whispers: psst\ns two\n");
    EXPECT_EQ(shown(ann), "s psst\n");
}

TEST_F(ReadingTest, EachIsReadWhereItWasLeft) {
    keep(den, "one");
    keep(den, "two");
    go(den);
    reading.see(1);
    go(ann, {false, 1, 3});
    EXPECT_TRUE(spot.follows);
    EXPECT_EQ(reading.countBelow(), 0);
    keep(den, "three");
    go(den);
    EXPECT_FALSE(spot.follows);
    EXPECT_EQ(spot.line, 1U);
    EXPECT_EQ(spot.above, 3);
    EXPECT_EQ(reading.countBelow(), 2);
    EXPECT_EQ(reading.shown(), &den);
    conversations.remove(den);
    EXPECT_EQ(reading.shown(), nullptr);
}

TEST_F(ReadingTest, TimesCanBeLeftOut) {
    keep(den, "one");
    EXPECT_EQ(reading.line(den, den.lines()[0]).stamp.size(), 5U);
    EXPECT_TRUE(reading.stamp(false));
    EXPECT_FALSE(reading.stamp(false));
    EXPECT_EQ(reading.line(den, den.lines()[0]).stamp, "");
}

TEST(ReadableColor, StaysAsItIsUnlessItCantBeRead) {
    const struct {
        std::uint32_t color, ground, seen;
    } cases[] = {{0xFFFF00, 0x000000, 0xFFFF00},
                 {0xFF0000, 0x000000, 0xFF0000},
                 {0x000000, 0xFFFFFF, 0x000000},
                 {0xFFFFFF, 0x000000, 0xFFFFFF}};
    for (const auto& [color, ground, seen] : cases)
        EXPECT_EQ(readableColor(color, ground), seen) << color;
    EXPECT_GT(readableColor(0x000000, 0x000000), 0x707070U);
    EXPECT_LT(readableColor(0xFFFFFF, 0xFFFFFF), 0x707070U);
}

} // namespace
} // namespace larkspin
