#include "support/talk.h"

namespace larkspin {

namespace {

// A machine on which songs have been played, in the counter file's order.
class CountedMachine : public VirtualMachine {
public:
    explicit CountedMachine(const Lines& counts) : VirtualMachine(Lines{}) {
        std::string file = "[times played]\r\n";
        for (const std::string& line : counts)
            file += line + "\r\n";
        writeDataFile("played.ini", file);
    }

    Lines recital(const std::string& line) {
        forget();
        owner(line);
        return allSaid();
    }
};

const std::string five = "top <b>5</b> most played songs";

} // namespace

TEST(TopList, RecitesByCountAndNotByText) {
    CountedMachine machine({"a.mp3=12", "b.mp3=3", "c.wav=100"});
    const Nanoseconds begin = machine.loop.now();
    EXPECT_EQ(machine.recital("'top 2"),
              (Lines{"top <b>2</b> most played songs", "<b>1</b>.  c.wav:  <b>100",
                     "<b>2</b>.  a.mp3:  <b>12"}));
    EXPECT_EQ(machine.loop.now() - begin, 2100ms);
    EXPECT_EQ(machine.recital("'tops"),
              (Lines{five, "there are only <b>3</b> songs", "<b>1</b>.  c.wav:  <b>100",
                     "<b>2</b>.  a.mp3:  <b>12", "<b>3</b>.  b.mp3:  <b>3"}));
    EXPECT_EQ(machine.recital("'top  +3.4 ").size(), 4u);
}

TEST(TopList, TakesAnyCountAndAnyTitle) {
    CountedMachine machine({"seven.mp3=1234567", "", "x | 6.mp3=4", "a=b.mp3=5", "no count", "=9",
                            "ten.mp3=10000000", "more.mp3=99999999999999999999",
                            "most.mp3=100000000000000000000", "word.mp3=often", "six.mp3=999999",
                            "b.mp3=2", "A.mp3=2", "C.mp3=002"});
    EXPECT_EQ(
        machine.recital("'top 13"),
        (Lines{"top <b>13</b> most played songs", "there are only <b>12</b> songs",
               "<b>1</b>.  most.mp3:  <b>100000000000000000000",
               "<b>2</b>.  more.mp3:  <b>99999999999999999999", "<b>3</b>.  ten.mp3:  <b>10000000",
               "<b>4</b>.  seven.mp3:  <b>1234567", "<b>5</b>.  six.mp3:  <b>999999",
               "<b>6</b>.  :  <b>9", "<b>7</b>.  x | 6.mp3:  <b>4", "<b>8</b>.  C.mp3:  <b>2",
               "<b>9</b>.  b.mp3:  <b>2", "<b>10</b>.  A.mp3:  <b>2", "<b>11</b>.  word.mp3:  <b>0",
               "<b>12</b>.  a:  <b>0"}));
}

TEST(TopList, HasNothingToReciteBeforeTheFirstEnd) {
    VirtualMachine machine(Lines{});
    const std::string nothing = five + "\nthere are only <b>0</b> songs";
    EXPECT_EQ(machine.answer("'tops"), nothing);
    machine.writeDataFile("played.ini", "[times played]\r\n");
    EXPECT_EQ(machine.answer("'tops"), nothing);
}

TEST(TopList, RefusesWhatIsNoNumberOfSongs) {
    CountedMachine machine({"a.mp3=1"});
    converse(machine, {Turn({"'top 0", "'top -1", "'top -0", "'top 0.5", "'top ", "'top many",
                             "'top 1e9", "'top 0x10", "'top \u0663", "'top 99999999999999999999"},
                            "type a number")});
}

TEST(TopList, GoesOnAfterASecondRecitalInsideIt) {
    CountedMachine machine({"a.mp3=1", "b.mp3=2"});
    machine.inMessage("<b>1</b>", [&] { machine.hear("'top 1"); });
    EXPECT_EQ(machine.recital("'top 2"),
              (Lines{"top <b>2</b> most played songs", "<b>1</b>.  b.mp3:  <b>2",
                     "top <b>1</b> most played songs", "<b>1</b>.  b.mp3:  <b>2",
                     "<b>2</b>.  a.mp3:  <b>1"}));
}

} // namespace larkspin
