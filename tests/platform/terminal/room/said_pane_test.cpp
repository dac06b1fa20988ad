// What has been said, as it stands on the terminal's screen: how lines break, and how the owner
// gets about in thousands of them.
#include "host/conversations.h"
#include "host/new_lines.h"
#include "platform/terminal/room/room_layout.h"
#include "platform/terminal/room/said_pane.h"
#include "support/virtual_machine.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace larkspin {
namespace {

struct SaidPaneTest : testing::Test {
    SaidPaneTest() {
        conversations.enter(den);
        reading.enter(den);
    }
    void say(const std::string& text, const std::string& speaker = "ann") {
        conversations.keep(den, {.kind = KeptLine::Kind::said, .speaker = speaker, .text = text});
    }
    void fill(int lines) {
        for (int line = 0; line < lines; ++line)
            say(std::to_string(line));
    }
    Cells draw(int rows, int columns) {
        Cells cells(rows, columns);
        pane.draw(cells, cells.area(), stylesIn(RoomColors::larkspin));
        return cells;
    }
    std::string seen(int rows, int columns) {
        std::string all;
        for (const std::string& row : textOf(draw(rows, columns)))
            all += row + '\n';
        return all;
    }
    VirtualLoop loop;
    ChatLines lines{loop};
    Conversations conversations{loop, lines, "lobby"};
    Conversation& den = conversations.add({Conversation::Kind::room, 1, "#den"});
    Reading reading{conversations, loop};
    SaidPane pane{conversations, reading};
};

TEST_F(SaidPaneTest, LinesBreakAndAreSetIn) {
    reading.stamp(false);
    const struct {
        std::string text, shown;
    } cases[] = {
        {"short", "ann: short\n"},
        {"one two three four five", "ann: one two three\n  four five\n"},
        {"abcdefghijklmnopqrstuvwxyz", "ann:\n  abcdefghijklmnopqr\n  stuvwxyz\n"},
        {"<b>one</b> <i>two</i> three four", "ann: one two three\n  four\n"},
        {"日本語日本語日本語", "ann: 日本語日本語日\n  本語\n"},
        {"one\ntwo", "ann: one\n  two\n"},
        {"a\x1b[31m\u202Eb", "ann: a\uFFFD[31m\uFFFDb\n"},
    };
    for (const auto& [text, shown] : cases) {
        say(text);
        const int rows = static_cast<int>(std::ranges::count(shown, '\n'));
        EXPECT_EQ(seen(rows, 20), shown);
    }
}

TEST_F(SaidPaneTest, TimesStandInFrontAndTheRestBelowTheText) {
    say("one two three four five six seven");
    const std::string stamp = stampOf(den.lines()[0], loop);
    EXPECT_EQ(seen(2, 40), stamp + " ann: one two three four five six\n        seven\n");
}

TEST_F(SaidPaneTest, StylesAreTheClients) {
    reading.stamp(false);
    say("<b>b</b><i>i</i><u>u</u><font color=#FF0000>r</font> https://lark.example.");
    const Cells cells = draw(1, 60);
    EXPECT_TRUE(cells.at(0, 0).style.bold); // the name
    EXPECT_TRUE(cells.at(0, 5).style.bold);
    EXPECT_TRUE(cells.at(0, 6).style.italic);
    EXPECT_TRUE(cells.at(0, 7).style.underlined);
    EXPECT_EQ(cells.at(0, 8).style.foreground, 0xFF0000U);
    EXPECT_TRUE(cells.at(0, 10).style.underlined);
    EXPECT_EQ(pane.linkAt(0, 10), "https://lark.example");
    EXPECT_EQ(pane.linkAt(0, 30), "");
}

TEST_F(SaidPaneTest, ALineThatCallsHimIsLit) {
    say("hi");
    conversations.keep(den, {.kind = KeptLine::Kind::said,
                             .speaker = "ann",
                             .text = "jo: hi <font color=#000000>there</font>",
                             .isForOwner = true});
    const Cells cells = draw(2, 40);
    const auto lit = *cells.at(1, 0).style.background;
    EXPECT_NE(cells.at(0, 39).style.background, lit);
    EXPECT_EQ(cells.at(1, 39).style.background, lit);
    EXPECT_EQ(cells.at(1, 18).style.background, lit);
}

TEST_F(SaidPaneTest, NamesHaveAColourEachIfHeWants) {
    reading.stamp(false);
    for (const auto& [speaker, isOwners] : {std::pair("ann", false), std::pair("bob", false),
                                            std::pair("ANN", false), std::pair("jo", true)})
        conversations.keep(
            den,
            {.kind = KeptLine::Kind::said, .speaker = speaker, .text = "hi", .isOwners = isOwners});
    const auto colorOf = [this](int row) { return draw(4, 40).at(row, 0).style.foreground; };
    const auto usual = colorOf(0);
    EXPECT_EQ(colorOf(1), usual);
    reading.colorNames(true);
    EXPECT_NE(colorOf(0), usual);
    EXPECT_NE(colorOf(1), colorOf(0));
    EXPECT_EQ(colorOf(2), colorOf(0)) << "the same person";
    EXPECT_EQ(colorOf(3), usual) << "his own";
    EXPECT_EQ(draw(4, 40).at(0, 6).style.foreground, usual) << "what is said";
}

TEST_F(SaidPaneTest, TheLastLinesStandAtTheFootAndOlderOnesAreScrolledTo) {
    reading.stamp(false);
    fill(10);
    EXPECT_EQ(seen(3, 20), "ann: 7\nann: 8\nann: 9\n");
    EXPECT_EQ(seen(12, 20), "\n\nann: 0\nann: 1\nann: 2\nann: 3\nann: 4\nann: 5\nann: 6\nann: 7\n"
                            "ann: 8\nann: 9\n");
    const struct {
        std::function<void()> hand;
        std::string top;
    } cases[] = {
        {[&] { pane.scroll(-2); }, "ann: 5"},  {[&] { pane.scrollPage(-1); }, "ann: 3"},
        {[&] { pane.scroll(-99); }, "ann: 0"}, {[&] { pane.scrollPage(1); }, "ann: 2"},
        {[&] { pane.toEnd(); }, "ann: 7"},     {[&] { pane.toStart(); }, "ann: 0"},
        {[&] { pane.scroll(99); }, "ann: 7"},
    };
    draw(3, 20);
    for (const auto& [hand, top] : cases) {
        hand();
        EXPECT_EQ(textOf(draw(3, 20))[0], top);
    }
}

TEST_F(SaidPaneTest, WhoReadsFurtherUpStaysThereAndIsToldOfNewLines) {
    reading.stamp(false);
    fill(10);
    draw(3, 40);
    pane.scroll(-3);
    draw(3, 40);
    say("new");
    EXPECT_EQ(seen(3, 40), "ann: 4\nann: 5\nann: 6                     1 new line ↓\n");
    EXPECT_TRUE(pane.isCountAt(2, 35));
    EXPECT_EQ(textOf(draw(2, 7))[0], "ann: 4"); // another size
    pane.toEnd();
    EXPECT_EQ(seen(3, 40), "ann: 8\nann: 9\nann: new\n");
}

TEST_F(SaidPaneTest, ALongLineIsScrolledThroughByItsRows) {
    reading.stamp(false);
    say("one two three four five six seven eight nine ten");
    fill(3);
    draw(3, 12);
    pane.scroll(-1);
    EXPECT_EQ(seen(3, 12), "  ten\nann: 0\nann: 1    ↓\n");
    pane.scroll(-2);
    EXPECT_EQ(textOf(draw(3, 12))[0], "  seven");
}

TEST_F(SaidPaneTest, WhatIsReadMayGo) {
    reading.stamp(false);
    fill(static_cast<int>(Conversation::mostLines));
    draw(3, 20);
    pane.toStart();
    pane.scroll(1);
    draw(3, 20);
    fill(10);
    EXPECT_EQ(textOf(draw(3, 20))[0], "ann: 10");
}

TEST_F(SaidPaneTest, NoSizeIsTooSmall) {
    fill(20);
    for (int rows = 0; rows < 4; ++rows)
        for (int columns = 0; columns < 12; ++columns) {
            draw(rows, columns);
            pane.scroll(-1);
            pane.scrollPage(-1);
        }
    pane.toEnd();
    EXPECT_EQ(seen(1, 1), "9\n");
}

std::string drawn(const RoomLayout& layout) {
    std::string all;
    const std::pair<char, Area> parts[] = {
        {'t', layout.title}, {'r', layout.rooms}, {'s', layout.said}, {'p', layout.people},
        {'h', layout.hint},  {'b', layout.song},  {'l', layout.line}};
    for (const auto& [name, area] : parts)
        if (!area.isEmpty())
            all += name + std::to_string(area.columns) + 'x' + std::to_string(area.rows) + ' ';
    return all;
}

TEST(RoomLayout, LeavesOutWhatHasNoRoom) {
    const RoomParts all{.hasRooms = true, .hasPeople = true, .hintRows = 5};
    const struct {
        int rows, columns;
        RoomParts parts;
        std::string layout;
    } cases[] = {
        {40, 120, all, "t120x1 r17x37 s86x32 p15x37 h86x5 b120x1 l120x1 "},
        {24, 80, all, "t80x1 r16x21 s63x16 h63x5 b80x1 l80x1 "},
        {24, 80, {.hasPeople = true}, "t80x1 s65x21 p14x21 b80x1 l80x1 "},
        {12, 40, all, "t40x1 s40x9 b40x1 l40x1 "},
        {5, 20, all, "s20x3 b20x1 l20x1 "},
        {3, 20, all, "s20x2 l20x1 "},
        {1, 1, all, "l1x1 "},
        {0, 0, all, ""},
    };
    for (const auto& [rows, columns, parts, layout] : cases)
        EXPECT_EQ(drawn(layOutRoom(rows, columns, parts)), layout) << rows << 'x' << columns;
}

} // namespace
} // namespace larkspin
