#include "support/talk.h"

namespace larkspin {

TEST(Sliders, AnswerAndTellThePlayer) {
    VirtualMachine machine({"a.mp3"}, 100s);
    machine.owner("'num 1");
    const std::string stupid = "can you be more stupid?", least = "0 is the least, you fuck up";
    const std::tuple<Lines, std::string, double, int> cases[] = {
        {{"'tempo 200"}, "tempo set to <b>200</b> (fast)", 2, -1500},
        {{"'tempo 201", "'tempo 300.5"}, "200 is the max, you fuck up", 2, -1500},
        {{"'tempo 100.5", "'tempo 99.", "'tempo -0.5", "'tempo ", "'tempo 1e2"}, stupid, 2, -1500},
        {{"'tempo -1", "'volume -1"}, least, 2, -1500},
        {{"'tempo  70 "}, "tempo set to <b> 70 </b> (slow)", 0.7, -1500},
        {{"'tempo 5"}, "tempo set to <b>5</b> (slow)", 0.05, -1500},
        {{"'tempo 0"}, "tempo set to <b>0</b> (slow)", 0.05, -1500},
        {{"'tempo +100"}, "tempo set to <b>+100</b> (normal)", 1, -1500},
        {{"'volume 1"}, "volume set:  <b>1</b>", 1, -2970},
        {{"'volume 0", "'volume 00"}, "volume set:  <b>0</b> (mute)", 1, -3000},
        {{"'volume 101", "'volume 100.5"}, "100 is the max, you fuck up", 1, -3000},
        {{"'volume 99.5", "'volume loud"}, stupid, 1, -3000},
        {{"'next"}, "next:  <b>1</b>.  a", 1, -3000},
        {{"'pause"}, "paused:  a", 1, -3000},
        {{"'volume 050"}, "volume set:  <b>050</b>", 1, -1500},
        {{"'resume"}, "resumed:  a", 1, -1500}};
    for (const auto& [lines, answer, rate, volume] : cases) {
        converse(machine, {Turn(lines, answer)});
        EXPECT_DOUBLE_EQ(machine.player.rate, rate) << lines[0];
        EXPECT_EQ(machine.player.volume, volume) << lines[0];
        EXPECT_EQ(machine.player.mute, volume == -3000) << lines[0];
    }
}

} // namespace larkspin
