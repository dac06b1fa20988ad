// The other player's commands.
#include "support/talk.h"

namespace larkspin {
namespace {

constexpr auto noPlayer = "winamp isnt loaded you fag";

struct WinampTest : testing::Test {
    WinampTest() {
        machine.start();
        machine.otherPlayer.runs = true;
        machine.otherPlayer.caption = "7. Low - Lullaby - Winamp";
    }
    VirtualMachine machine;
};

TEST_F(WinampTest, PressesAndTells) {
    converse(machine, {{"'amp", "7. Low - Lullaby"},
                       {"'wnext", "next track 7. Low - Lullaby"},
                       {"'wpre", "previous track 7. Low - Lullaby"},
                       {"'wplay", "now playing track 7. Low - Lullaby"},
                       {"'wstop", "stopped current winamp track"}});
    using Button = OtherPlayer::Button;
    EXPECT_EQ(machine.otherPlayer.pressed,
              (std::vector{Button::next, Button::previous, Button::play, Button::stop}));
}

TEST_F(WinampTest, TakesOffWhatItsNamesakePutsAroundATitle) {
    const std::vector<std::pair<std::string, std::string>> captions{
        {"a song - Winamp [Stopped]", "a song "},
        {"a - WINAMP - winamp song [STOPPED][stopped]", "a song "},
        {"Winamp - a song", "Winamp - a song"},
        {" - Winamp", ""},
        {"<b>a</b> <3 <font x - Winamp", "<\u200Cb>a<\u200C/b> <3 <\u200Cfont x"}};
    for (const auto& [caption, title] : captions) {
        machine.otherPlayer.caption = caption;
        EXPECT_EQ(machine.answer("'amp"), title) << caption;
    }
}

TEST_F(WinampTest, WithoutAPlayerTheyTellItAndInSilentModeOnlyTheTitleIsHeard) {
    machine.otherPlayer.runs = false;
    const std::string twoLines = noPlayer + std::string("\n");
    for (const auto& line : {"'wstop", "'wpre", "'wplay", "'wnext"})
        EXPECT_EQ(machine.answer(line), noPlayer);
    EXPECT_EQ(machine.answer("'amp"), twoLines);
    machine.owner("'silent");
    converse(machine, {{"'wstop", ""}, {"'amp", twoLines}});
    machine.otherPlayer.runs = true;
    converse(machine, {{"'amp", "7. Low - Lullaby"}, {"'wnext", ""}});
    EXPECT_EQ(machine.otherPlayer.pressed.size(), 1U);
}

} // namespace
} // namespace larkspin
