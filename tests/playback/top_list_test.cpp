#include "support/talk.h"

namespace larkspin {

// A machine on which songs have been played, in the counter file's order.
struct CountedMachine : VirtualMachine {
    explicit CountedMachine(const Lines& counts) : VirtualMachine(Lines{}) {
        std::string file = "[times played]\r\n";
        for (const std::string& line : counts)
            file += line + "\r\n";
        writeDataFile("played.ini", file);
    }
};

static const std::string five = "top <b>5</b> most played songs";

TEST(TopList, RecitesByCountAndNotByText) {
    CountedMachine machine({"a.mp3=12", "b.mp3=3", "c.wav=100"});
    const Nanoseconds begin = machine.loop.now();
    const std::string two = "\n<b>1</b>.  c.wav:  <b>100\n<b>2</b>.  a.mp3:  <b>12";
    EXPECT_EQ(machine.answer("'top 2"), "top <b>2</b> most played songs" + two);
    EXPECT_EQ(machine.loop.now() - begin, 2100ms);
    EXPECT_EQ(machine.answer("'tops"),
              five + "\nthere are only <b>3</b> songs" + two + "\n<b>3</b>.  b.mp3:  <b>3");
    EXPECT_TRUE(machine.answer("'top  +3.4 ").starts_with("top <b>3</b> most"));
    converse(machine, {Turn({"'top 0", "'top -1", "'top -0", "'top 0.5", "'top ", "'top many",
                             "'top 1e9", "'top 0x10", "'top \u0663", "'top 99999999999999999999"},
                            "type a number")});
}

TEST(TopList, TakesAnyCountAndAnyTitle) {
    CountedMachine machine({"seven.mp3=1234567", "", "x | 6.mp3=4", "a=b.mp3=5", "no count", "=9",
                            "ten.mp3=10000000", "more.mp3=0099999999999999999999",
                            "most.mp3=100000000000000000000", "word.mp3=often", "six.mp3=999999",
                            "b.mp3=2", "A.mp3=2", "C.mp3=002"});
    std::string expected = "top <b>13</b> most played songs\nthere are only <b>12</b> songs";
    int place = 0;
    for (const char* row :
         {"most.mp3:  <b>100000000000000000000", "more.mp3:  <b>99999999999999999999",
          "ten.mp3:  <b>10000000", "seven.mp3:  <b>1234567", "six.mp3:  <b>999999", ":  <b>9",
          "x | 6.mp3:  <b>4", "C.mp3:  <b>2", "b.mp3:  <b>2", "A.mp3:  <b>2", "word.mp3:  <b>0",
          "a:  <b>0"})
        expected += "\n<b>" + std::to_string(++place) + "</b>.  " + row;
    EXPECT_EQ(machine.answer("'top 13"), expected);
}

TEST(TopList, HasNothingToReciteBeforeTheFirstEnd) {
    CountedMachine machine({});
    EXPECT_EQ(machine.answer("'tops"), five + "\nthere are only <b>0</b> songs");
    std::filesystem::remove(machine.disk.path() / "data/played.ini");
    EXPECT_EQ(machine.answer("'tops"), five + "\nthere are only <b>0</b> songs");
}

} // namespace larkspin
