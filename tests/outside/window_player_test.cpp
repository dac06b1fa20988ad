// The other player as a window.
#include "outside/window_player.h"
#include "support/pretend_windows.h"
#include "support/virtual_outside.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

using Button = OtherPlayer::Button;

struct PlayersWindows : PretendWindows {
    bool post(HostHandle window, unsigned message, std::uint64_t wParam,
              std::int64_t lParam) override {
        posted.push_back({window, message, wParam, static_cast<std::uint64_t>(lParam)});
        return has(window);
    }
    std::vector<std::vector<std::uint64_t>> posted;
};

struct WindowPlayerTest : testing::Test {
    SettablePlayer onBus;
    PlayersWindows windows;
    WindowPlayer player{onBus, windows};
};

TEST_F(WindowPlayerTest, PressesItsButtonsAndReadsItsCaption) {
    EXPECT_FALSE(player.press(Button::play));
    EXPECT_EQ(player.title(), std::nullopt);
    windows.add(0, "Notepad", "another window");
    const HostHandle window = windows.add(0, "Winamp v1.x", "1. caf\xE9 - Winamp");
    windows.add(0, "Winamp v1.x", "behind it");
    EXPECT_EQ(player.title(), "1. caf\u00E9 - Winamp");
    for (const auto& [button, number] : {std::pair(Button::previous, 40044u),
                                         {Button::play, 40045u},
                                         {Button::stop, 40047u},
                                         {Button::next, 40048u}}) {
        EXPECT_TRUE(player.press(button));
        EXPECT_EQ(windows.posted.back(), (std::vector<std::uint64_t>{window, 0x111, number, 0}));
    }
}

TEST_F(WindowPlayerTest, APlayerOnTheBusGoesFirst) {
    windows.add(0, "Winamp v1.x", "a window");
    onBus.runs = true;
    onBus.caption = "on the bus";
    EXPECT_EQ(player.title(), "on the bus");
    EXPECT_TRUE(player.press(Button::stop));
    EXPECT_EQ(onBus.pressed, std::vector{Button::stop});
    EXPECT_EQ(windows.posted.size(), 0u);
}

} // namespace
} // namespace larkspin
