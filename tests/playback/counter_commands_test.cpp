#include "support/talk.h"

namespace larkspin {

TEST(CounterCommands, TellHowOftenSongsHaveBeenPlayed) {
    VirtualMachine machine({"a.mp3", "b.mp3"}, 10s);
    EXPECT_EQ(machine.answer("'times"), "this song has been played <b>0</b> times");
    machine.owner("'num 1", 11s);
    machine.owner("'num 1", 11s);
    EXPECT_EQ(machine.answer("'times"), "this song has been played <b>2</b> times");
    machine.owner("'num 1");
    EXPECT_EQ(machine.trayEntry("playtz"), "played 3 times");
    EXPECT_EQ(machine.answer("'total"), "total files played:  <b>2");
    machine.state().silnt = true;
    converse(machine,
             {Turn({"'total", "'tops", "'top 3", "'top many"}, "[box] you are in silent mode")});
    EXPECT_EQ(machine.answer("'times"), "[box] this song has been played 2 times");
    EXPECT_EQ(machine.trayEntry("playtz"), "played 2 times");
    machine.owner("'play");
    EXPECT_EQ(machine.trayEntry("playtz"), "played 3 times");
    machine.owner("'num 2");
    EXPECT_EQ(machine.answer("'times"), "[box] this song has been played 0 times");
}

static const Lines oddNames{"a=b.mp3",   "a=c.mp3",    "=eq.wav",     "[x];y.wav", "[x] ; y.wav",
                            "[x]y.wav",  "a%3Db.mp3",  "a%253Db.mp3", "100%.mp3",  "my%20song.mp3",
                            ";.mp3",     "a.mp3=.mp3", "x.mp3=y.mp3", "x.mp3",     "{ .mp3",
                            "{a{b}.mp3", "%25.mp3",    "[times].mp3"};

// However their names read to an INI file.
TEST(CounterCommands, EachNameCountsByItself) {
    VirtualMachine machine(oddNames, 10s);
    std::map<std::string, std::string> counts;
    for (std::size_t row = 1; row <= oddNames.size(); ++row) {
        machine.owner("'num " + std::to_string(row));
        counts[machine.state().play] = std::to_string(row);
        for (std::size_t end = 0; end < row; ++end)
            machine.owner("'play", 11s);
    }
    machine.owner("'exit");
    machine.start();
    const std::string top = machine.answer("'top 99") + '\n';
    for (const auto& [title, count] : counts)
        EXPECT_NE(top.find(".  " + title + ":  <b>" + count + '\n'), top.npos) << title;
    for (std::size_t row = 1; row <= oddNames.size(); ++row) {
        machine.owner("'num 1");
        const std::string count = counts[machine.state().play];
        machine.owner("'rename ~=" + std::to_string(row));
        EXPECT_EQ(machine.answer("'times"), "this song has been played <b>" + count + "</b> times");
        EXPECT_EQ(machine.answer("'delete").substr(0, 8), "deleted:");
    }
    EXPECT_EQ(machine.dataFile("played.ini"), "[times played]\r\n");
}

TEST(CounterCommands, CountsOfOlderVersionsStillCount) {
    for (const auto& [title, count] : std::map<std::string, std::string>{{"a=b.mp3", "2"},
                                                                         {"a=c.mp3", "2"},
                                                                         {"100%.mp3", "3"},
                                                                         {"my%20song.mp3", "4"},
                                                                         {"[x]y.wav", "5"},
                                                                         {"x.mp3=y.mp3", "0"}}) {
        VirtualMachine machine(Lines{title});
        machine.writeDataFile("played.ini", "[times played]\r\na=2\r\n100%.mp3=3\r\n"
                                            "my%20song.mp3=4\r\n[x]y.wav=5\r\nx.mp3=6\r\n");
        machine.owner("'num 1");
        EXPECT_EQ(machine.answer("'times"), "this song has been played <b>" + count + "</b> times");
    }
}

} // namespace larkspin
