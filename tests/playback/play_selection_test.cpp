#include "support/talk.h"

#include <set>

namespace larkspin {

TEST(PlaySelection, StartsARowByItsNumber) {
    VirtualMachine machine({"a.mp3", "b.mp3", "c.mp3", "d.mp3"});
    converse(machine, {Turn({"'num 0", "'num abc", "'num ", "'num 5", "'num 32768", "'num -32769",
                             "'num 99999999999", "'num 0.5", "'num 1e0"},
                            "invalid number stupid"),
                       Turn("'num -1", "not found, refresh the directory (\\)"),
                       Turn("'num 2.5", "playing:  <b>2</b>.  b"),
                       Turn("'num 3.5", "playing:  <b>4</b>.  d"),
                       Turn({"'num  +3 ", "'num -1", "'num -32768"}, "playing:  <b>3</b>.  c")});
}

TEST(PlaySelection, StartsTheOnlyHitOrAsks) {
    VirtualMachine machine({"Lala.wav", "ride 1.mp3", "ride 2.mp3", "z.mp3"});
    converse(
        machine,
        {Turn({"'play x", "'play .mp3", "'play rock"}, "your gay song was not found"),
         Turn("'play lA", "playing:  <b>1</b>.  <b><u>lA</b></u><b><u>lA</b></u> (<b>.wav</b>)"),
         Turn("'pause", "paused:  Lala"), Turn("'play x", "your gay song was not found"),
         Turn("'resume", "resumed:  Lala"), Turn("'pause", "paused:  Lala"),
         Turn("'trig .", "new trigger:  ."),
         Turn(".play RIDE", "scroll <b>2</b> choices?  <b>.yes </b>, <b>.no</b>, or <b>.view"),
         Turn(".resume", "already playing something you dick")});
    EXPECT_EQ(machine.player.PlayState(), PlayState::paused) << "only the mark has gone";
    EXPECT_EQ(machine.player.opened.size(), 1u);
    EXPECT_EQ(machine.answer(".next"), "next:  <b>4</b>.  z") << "after the last hit";
    EXPECT_EQ(machine.state().choiceList.count(), 2) << "an open selection stays";
}

TEST(PlaySelection, PicksAmongTheHitsOfASearch) {
    VirtualMachine machine({"a1.mp3", "a2.mp3", "b.mp3", "c1 a.mp3", "c2.mp3"});
    struct Case {
        std::string text;
        Lines names; // as they are shown
        int shift;   // from the picked hit's index to masterIndex
    };
    // One hit again and again, hits side by side, hits with a gap, and every row.
    const Case cases[] = {{"B", {"<b><u>B</b></u>"}, 2},
                          {"c", {"<b><u>c</b></u>1 a", "<b><u>c</b></u>2"}, 3},
                          {"A", {"<b><u>A</b></u>1", "<b><u>A</b></u>2", "c1 <b><u>A</b></u>"}, 1},
                          {"", {"a1", "a2", "b", "c1 a", "c2"}, 0}};
    for (const Case& c : cases) {
        std::set<std::size_t> seen;
        for (int turn = 0; turn < 60; ++turn) {
            const std::string said = machine.answer("'rnd " + c.text);
            const auto picked = static_cast<std::size_t>(said.at(12) - '1');
            ASSERT_LT(picked, c.names.size()) << said;
            EXPECT_EQ(said, "random:  <b>" + std::to_string(picked + 1) + "/" +
                                std::to_string(c.names.size()) + "</b>.  " + c.names[picked]);
            EXPECT_EQ(machine.state().masterIndex(), static_cast<int>(picked) + c.shift);
            EXPECT_EQ(machine.state().choiceList.row(0), machine.setting("play"));
            seen.insert(picked);
        }
        EXPECT_EQ(seen.size(), c.names.size());
    }
    machine.says({"'num 1", "'rnd B", "'play a", "'no"});
    EXPECT_EQ(machine.answer("'next"), "next:  <b>3</b>.  b") << "from the row before the hit";
}

// A start by any of them runs the mode tick, and the mark of a pause goes.
TEST(PlaySelection, GoesOnWithTheModeAndWithoutThePause) {
    for (const char* line : {"'num 1", "'rnd", "'rnd a", "'play a", "'play", "'next", "'pre"}) {
        SCOPED_TRACE(line);
        VirtualMachine machine({"a.mp3"}, 9.9s);
        machine.says({"'repeat", "'num 1", "'pause", line});
        EXPECT_EQ(machine.state().pauseMark, unpausedMark);
        EXPECT_EQ(machine.saidWithin(10s), Lines{"repeat:  a"});
    }
}

} // namespace larkspin
