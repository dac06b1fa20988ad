#include "shell/window.h"
#include "support/talk.h"

namespace larkspin {

static std::string shown(VirtualMachine& machine, const std::string& control) {
    return machine.window("mp3s").control(control).text();
}

TEST(SectionRepeat, GoesBackAtTheFirstTickPastItsEnd) {
    VirtualMachine machine({"a.mp3", "b.mp3"}, 180s);
    const auto position = [&] { return machine.player.CurrentPosition(); };
    machine.doubleClick("mp3s", "mediaCaption");
    converse(machine,
             {Turn("'cont", "continuous play - <b>on"), Turn("'num 1", "playing:  <b>1</b>.  a"),
              Turn("'rec 1:00, 1:30", "repeating from <b>1:00</b> to <b>1:30", 90s)});
    EXPECT_DOUBLE_EQ(position(), 90);
    machine.advance(1s);
    EXPECT_LT(position(), 61);
    EXPECT_EQ(shown(machine, "mediaCaption"), "  song position:  1:00 / 3:00");
    machine.advance(1h);
    EXPECT_LT(position(), 92);
    machine.owner("'next", 10min);
    EXPECT_LT(position(), 92) << "a new song doesn't end the repeat";
    converse(machine, {Turn("'end", "repeating session ended", 30s)});
    EXPECT_GT(position(), 90);
    EXPECT_EQ(machine.saidWithin(90s), Lines{"next:  <b>1</b>.  a"});
}

TEST(SectionRepeat, TakesTimesAsTheyAreTyped) {
    VirtualMachine machine({"a.mp3"}, 180s);
    machine.owner("'num 1");
    const char* const cases[][4] = {
        // line, answer, start, end
        {"'rec 10, 20.5", "repeating from <b>10</b> to <b>20.5", "10", "20.5"},
        {"'REC :30,  1: ", "repeating from <b>:30</b> to <b>1:", "30", "60"},
        {"'rec 1:30, 90", "repeating from <b>1:30</b> to <b>90", "90", "90"},
        {"'rec 0:90, 1:75", "repeating from <b>0:90</b> to <b>1:75", "90", "135"},
        {"'rec x, 2:00", "those arent times, dumbass", "90", "135"},
        {"'rec 1e1, 1:2:3", "those arent times, dumbass", "90", "135"},
        {"'rec 1:00,2:00, 3", "those arent times, dumbass", "90", "135"},
        {"'rec 2:00, 1:00", "thats backwards, stupid", "90", "135"},
        {"'rec , 1:00", "", "90", "135"},
        {"'rec 0:10, ", "", "90", "135"},
        {"'rec 0:10 0:20", "", "90", "135"},
        {"'end", "repeating session ended", "90", ""},
    };
    for (const auto& [line, answer, start, end] : cases) {
        EXPECT_EQ(machine.answer(line), answer);
        EXPECT_EQ(machine.state().sectionStart, start) << line;
        EXPECT_EQ(machine.state().sectionEnd, end) << line;
    }
    machine.state().trigger = ",";
    EXPECT_EQ(machine.answer(",rec 1:00, 1:30"), "repeating from <b>1:00</b> to <b>1:30");
}

TEST(SectionRepeat, IsMarkedByTheButton) {
    VirtualMachine machine({"a.mp3", "b.mp3"}, 20s);
    const auto position = [&] { return machine.player.CurrentPosition(); };
    machine.owner("'silent");
    machine.owner("'num 1", 5s);
    EXPECT_EQ(machine.answer("'rec 0:01, 0:02"),
              "[box] use the rec button on the mp3s window to repeat a section in silent mode");
    EXPECT_EQ(shown(machine, "Command6"), "rec");
    machine.click("mp3s", "Command6");
    EXPECT_EQ(shown(machine, "Command6"), "stop");
    machine.advance(10s);
    EXPECT_EQ(shown(machine, "sectionSeconds"), "10");
    machine.click("mp3s", "pauseButton");
    machine.click("mp3s", "Command6");
    EXPECT_EQ(shown(machine, "Command6"), "end");
    machine.advance(2s);
    EXPECT_GT(position(), 14) << "at its end, and not past it";
    machine.click("mp3s", "pauseButton");
    machine.advance(1s);
    EXPECT_NEAR(position(), 5.5, 0.5);
    machine.click("mp3s", "Command6");
    EXPECT_EQ(shown(machine, "Command6"), "rec");
    EXPECT_EQ(shown(machine, "sectionSeconds"), "0");
    machine.advance(20s);
    EXPECT_EQ(machine.player.PlayState(), PlayState::stopped);
}

// Whose end lies before its start, or beyond the song's.
TEST(SectionRepeat, LeavesAnOddSectionToTheTick) {
    VirtualMachine machine({"a.mp3"}, 20s);
    machine.owner("'num 1", 10s);
    machine.click("mp3s", "Command6");
    machine.owner("'pos 0:03");
    machine.click("mp3s", "Command6");
    machine.advance(8s);
    EXPECT_LT(machine.player.CurrentPosition(), 11);
    machine.owner("'rec 1, 30", 20s);
    EXPECT_EQ(machine.setting("played"), "1");
}

} // namespace larkspin
