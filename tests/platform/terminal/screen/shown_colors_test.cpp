#include "platform/terminal/room/room_styles.h"
#include "platform/terminal/screen/shown_colors.h"
#include "platform/terminal/screen/true_colors.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

TEST(ShownColors, AreTheNearestThatTheTerminalHas) {
    const struct {
        Rgb color;
        int of256, of16, of8;
    } cases[] = {
        {0x000000, 16, 0, 0},  {0xFFFFFF, 231, 15, 7}, {0xFF0000, 196, 9, 1}, {0x5F87AF, 67, 8, 6},
        {0x808080, 244, 8, 3}, {0x121212, 233, 0, 0},  {0x00FF00, 46, 10, 2}, {0x0066BB, 25, 12, 6},
    };
    for (const auto& [color, of256, of16, of8] : cases) {
        EXPECT_EQ(nearestColor(color, 256), of256) << std::hex << color;
        EXPECT_EQ(nearestColor(color, 16), of16) << std::hex << color;
        EXPECT_EQ(nearestColor(color, 8), of8) << std::hex << color;
    }
}

TEST(ShownColors, CanBeReadWhereTheyAreFew) {
    constexpr int own = -1;
    const struct {
        std::optional<Rgb> front, ground;
        int colors;
        ShownColors shown;
    } cases[] = {
        {0x8D8D8D, std::nullopt, 8, {own, own}}, {0x8D8D8D, 0xDFDFDF, 8, {0, 7}},
        {0x8D8D8D, 0xDFDFDF, 16, {8, 7}},        {0xFFFFFF, 0xFFFFF0, 16, {0, 15}},
        {0x0000CC, 0x000000, 8, {7, 0}},         {0x00A3A3, 0x000000, 8, {6, 0}},
        {std::nullopt, 0x000000, 8, {own, 0}},   {0x8D8D8D, std::nullopt, 256, {245, own}},
    };
    for (const auto& [front, ground, colors, shown] : cases) {
        const auto got = shownColors({.foreground = front, .background = ground}, colors);
        EXPECT_EQ(got.foreground, shown.foreground) << front.value_or(0) << " of " << colors;
        EXPECT_EQ(got.background, shown.background) << ground.value_or(0) << " of " << colors;
    }
}

// Where black and dark gray are one.
TEST(ShownColors, StripsAreTheOtherWayRoundWhereTheyAreFew) {
    const struct {
        Rgb front, ground;
        int colors;
        ShownColors shown;
    } cases[] = {
        {0x00FFFF, 0x002424, 8, {0, 6}},
        {0x00FFFF, 0x002424, 16, {0, 14}},
        {0x1B1B1B, 0xDFDFDF, 8, {7, 0}},
        {0x00FFFF, 0x002424, 256, {51, 234}},
    };
    for (const auto& [front, ground, colors, shown] : cases) {
        const auto got =
            shownColors({.foreground = front, .background = ground, .isStrip = true}, colors);
        EXPECT_EQ(got.foreground, shown.foreground) << front << " of " << colors;
        EXPECT_EQ(got.background, shown.background) << ground << " of " << colors;
    }
}

TEST(ShownColors, OfWhatStandsOutInTheRoomAreNotThoseAroundIt) {
    for (const RoomColors each : {RoomColors::larkspin, RoomColors::light, RoomColors::dark})
        for (const int colors : {8, 16, 256}) {
            SCOPED_TRACE(roomColorNames[static_cast<int>(each)] + std::to_string(colors));
            const RoomStyles styles = stylesIn(each);
            const auto ground = [colors](const CellStyle& style) {
                return shownColors(style, colors).background;
            };
            EXPECT_NE(ground(styles.strip), ground(styles.plain));
            EXPECT_NE(ground(styles.chosen), ground(styles.plain));
            EXPECT_NE(ground(styles.marked), ground(styles.strip));
        }
}

TEST(ShownColors, AreThemselvesWhereTheTerminalShowsAny) {
    TrueColors colors;
    EXPECT_EQ(colors.numberOf(0x102030), 16);
    EXPECT_EQ(colors.numberOf(0xFFFFFF), 17);
    EXPECT_EQ(colors.numberOf(0x102030), 16);
    const std::pair<std::string_view, std::string_view> cases[] = {
        {"a\x1b[38;5;16mb\x1b[48;5;17m", "a\x1b[38;2;16;32;48mb\x1b[48;2;255;255;255m"},
        {"\x1b[38;5;18m\x1b[38;5;7m\x1b[31m", "\x1b[38;5;18m\x1b[38;5;7m\x1b[31m"},
        {"\x1b[38;5;", "\x1b[38;5;"},
        {"38;5;16m\x1b", "38;5;16m\x1b"},
    };
    for (const auto& [bytes, shown] : cases)
        EXPECT_EQ(colors.in(bytes), shown);
    for (Rgb color = 0; color < 1000; ++color)
        EXPECT_LT(colors.numberOf(color << 12), 256);
    EXPECT_TRUE(colors.isNearlyFull());
}

} // namespace
} // namespace larkspin
