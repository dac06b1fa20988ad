#include "platform/terminal/screen/cells.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

std::string shown(const Cells& cells) {
    return textOf(cells).front();
}

TEST(Cells, ShowATextAsAnEyeMaySeeIt) {
    const struct {
        std::string_view text, shown;
        int column, right, after;
    } cases[] = {
        {"word", "word", 0, 10, 4},
        {"word", " word", 1, 10, 5},
        {"word", "wo", 0, 2, 2},
        {"word", "        wo", 8, 99, 10},
        {"word", "rd", -2, 10, 2},
        {"日本", "日本", 0, 10, 4},
        {"日本x", "日", 0, 3, 2}, // half of a character has no place, and nothing comes after it
        {"日本", " 本", -1, 10, 3},
        {"e\u0301x", "e\u0301x", 0, 10, 2},
        {"\u0301x", "x", 0, 10, 1},
        {"日\u0301", "日\u0301", 0, 10, 2},
        {"a\u0301\u0302\u0303\u0304\u0305\u0306", "a\u0301\u0302\u0303\u0304", 0, 10, 1},
        {"\x1b[2J\a", "\uFFFD[2J\uFFFD", 0, 10, 5},
        {"a\nb\tc", "a b\uFFFDc", 0, 10, 5},
        {"\u202Egpj", "\uFFFDgpj", 0, 10, 4},
        {"\xFF", "\uFFFD", 0, 10, 1},
        {"שלום", "שלום", 0, 10, 4},
    };
    for (const auto& [text, expected, column, right, after] : cases) {
        Cells cells(1, 10);
        EXPECT_EQ(cells.put(0, column, right, text, {}), after) << text;
        EXPECT_EQ(shown(cells), expected) << text;
    }
}

TEST(Cells, TakeNothingOutsideOfTheGrid) {
    Cells cells(2, 3);
    cells.fill({-5, -5, 20, 20}, {}, U'.');
    cells.put(-1, 0, 3, "above", {});
    EXPECT_EQ(cells.put(2, 0, 3, "below", {}), 3);
    cells.restyle({1, 1, 50, 50}, {.bold = true});
    EXPECT_EQ(textOf(cells), (std::vector<std::string>{"...", "..."}));
    EXPECT_FALSE(cells.at(1, 0).style.bold);
    EXPECT_TRUE(cells.at(1, 2).style.bold);
    Cells none(0, -1);
    none.put(0, 0, 1, "x", {});
    EXPECT_TRUE(textOf(none).empty());
}

TEST(Cells, LeaveNoHalfOfAWideCharacter) {
    for (const int at : {0, 1}) {
        Cells cells(1, 4);
        cells.put(0, 0, 4, "日本", {});
        cells.put(0, at, 4, "x", {});
        EXPECT_EQ(shown(cells), at == 0 ? "x 本" : " x本");
    }
    Cells cells(1, 4);
    cells.put(0, 0, 4, "日本", {});
    cells.put(0, 1, 4, "語", {});
    EXPECT_EQ(shown(cells), " 語");
    EXPECT_TRUE(cells.at(0, 2).isSecondHalf());
}

TEST(Cells, CutATextWithoutRoom) {
    Cells cells(1, 8);
    EXPECT_EQ(cells.putCut(0, 1, 6, "日本語", {.italic = true}), 6);
    EXPECT_EQ(shown(cells), " 日本…");
    EXPECT_TRUE(cells.at(0, 5).style.italic);
    EXPECT_EQ(cells.putCut(0, 0, 8, "room", {}), 4);
}

TEST(Cells, AreasHaveWhatTheyShare) {
    const Area area{1, 2, 4, 6};
    EXPECT_EQ(area.within({3, 0, 9, 4}), (Area{3, 2, 2, 2}));
    EXPECT_TRUE(area.within({9, 9, 1, 1}).isEmpty());
    EXPECT_EQ(area.inset(1, 2), (Area{2, 4, 2, 2}));
    EXPECT_TRUE(area.inset(2, 3).isEmpty());
}

} // namespace
} // namespace larkspin
