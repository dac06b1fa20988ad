#include "platform/terminal/screen/shown_colors.h"

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

} // namespace
} // namespace larkspin
