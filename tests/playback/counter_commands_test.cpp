#include "support/talk.h"

namespace larkspin {

TEST(CounterCommands, TellHowOftenTheSongHasBeenPlayed) {
    VirtualMachine machine({"a.mp3", "b.mp3"}, 10s);
    EXPECT_EQ(machine.answer("'times"), "this song has been played <b>0</b> times");
    machine.owner("'num 1", 11s);
    machine.owner("'num 1", 11s);
    EXPECT_EQ(machine.answer("'times"), "this song has been played <b>2</b> times");
    machine.owner("'num 1");
    EXPECT_EQ(machine.trayEntry("playtz"), "played 3 times");
    machine.state().silnt = true;
    EXPECT_EQ(machine.answer("'times"), "[box] this song has been played 2 times");
    EXPECT_EQ(machine.trayEntry("playtz"), "played 2 times");
    machine.owner("'num 2");
    EXPECT_EQ(machine.answer("'times"), "[box] this song has been played 0 times");
}

TEST(CounterCommands, TellHowManySongsHaveBeenPlayed) {
    VirtualMachine machine({"a.mp3"}, 10s);
    machine.owner("'num 1", 11s);
    EXPECT_EQ(machine.answer("'total"), "total files played:  <b>1");
    machine.state().silnt = true;
    converse(machine,
             {Turn({"'total", "'tops", "'top 3", "'top many"}, "[box] you are in silent mode")});
}

} // namespace larkspin
