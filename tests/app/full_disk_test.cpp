#include "support/talk.h"

#include <algorithm>

namespace larkspin {

namespace {

bool isOneOf(const std::string& text, const Lines& texts) {
    return std::find(texts.begin(), texts.end(), text) != texts.end();
}

} // namespace

TEST(FullDisk, LeavesEachFileOldOrNewWhicheverWriteFails) {
    for (int allowed = 0, full = true; full && !::testing::Test::HasFailure(); ++allowed) {
        SCOPED_TRACE(allowed);
        VirtualMachine machine;
        machine.writeDataFile("larkspin.ini", "[lark]\r\nload=3\r\ntrigger='\r\nplayed=5\r\n");
        machine.playlist({"a.mp3", "b.mp3"}, 10s);
        const std::string list = machine.dataFile("temp.lst");
        machine.files.fullAfter = allowed;
        ASSERT_TRUE(machine.start());
        for (const auto& [line, answer] : std::vector<std::pair<std::string, std::string>>{
                 {"'next", "next:  <b>1</b>.  a"},
                 {"'tempo 150", "tempo set to <b>150</b> (fast)"},
                 {"'cont", "continuous play - <b>on"}})
            EXPECT_TRUE((machine.answer(line) + '\n').starts_with(answer + '\n')) << line;
        const Lines said = machine.saidWithin(8s);
        EXPECT_TRUE(isOneOf("next:  <b>2</b>.  b", said));
        EXPECT_FALSE(machine.owner("'exit"));
        full = machine.files.full;
        EXPECT_TRUE(machine.dataFile("larkspin.ini").starts_with("[lark]\r\nload="));
        EXPECT_TRUE(isOneOf(machine.setting("played"), {"5", "6"}));
        EXPECT_TRUE(isOneOf(machine.dataFile("played.ini"), {"", "[times played]\r\na.mp3=1\r\n"}));
        EXPECT_EQ(machine.dataFile("temp.lst"), list);
        if (!full) {
            EXPECT_EQ(machine.setting("tempo"), "150");
        }
    }
}

// Of the songs a and b, a is played to its end.
TEST(FailedRead, LosesNothingWhicheverReadItIs) {
    int position = 0;
    for (int reads = 1; position < reads && !::testing::Test::HasFailure();) {
        SCOPED_TRACE(++position);
        VirtualMachine machine;
        const std::string kept =
            "trigger='\r\nvolume=77\r\nmedia filter=all types\r\nascii=mine\r\n"
            "first load=long ago\r\nmp3stpos=1\r\nmp3slpos=2\r\nmy own=line\r\n";
        machine.writeDataFile("larkspin.ini",
                              "[lark]\r\n" + kept +
                                  "load=3\r\nplayed=5\r\nmp3sec=100\r\nprogsec=200\r\n");
        machine.writeDataFile("played.ini", "[times played]\r\nother.mp3=7\r\na.mp3=4\r\n");
        machine.playlist({"a.mp3", "b.mp3"}, 10s);
        std::map<std::string, std::string> before{{"temp.lst", machine.dataFile("temp.lst")}};
        for (const char* name : {"larkmain.lpb", "lksapp.lst", "lksappl.lst"}) {
            before[name] = "one of " + std::string(name) + "\r\n";
            machine.writeDataFile(name, before[name]);
        }
        machine.files.failReadAt = position;
        machine.start();
        machine.owner("'next");
        machine.owner("'cont", 12s);
        machine.owner("'exit");
        reads = machine.files.reads;
        machine.files.failReadAt = 0;

        for (const auto& [name, lines] : before)
            EXPECT_EQ(machine.dataFile(name), lines) << name;
        const std::string settings = machine.dataFile("larkspin.ini");
        EXPECT_TRUE(settings.starts_with("[lark]\r\n" + kept)) << settings;
        EXPECT_TRUE(isOneOf(machine.setting("load"), {"3", "4"})) << settings;
        EXPECT_TRUE(isOneOf(machine.setting("played"), {"5", "6"})) << settings;
        EXPECT_GE(std::stoi(machine.setting("mp3sec")), 100);
        EXPECT_GE(std::stoi(machine.setting("progsec")), 200);
        const std::string counts = machine.dataFile("played.ini");
        EXPECT_TRUE(isOneOf(counts, {"[times played]\r\nother.mp3=7\r\na.mp3=4\r\n",
                                     "[times played]\r\nother.mp3=7\r\na.mp3=5\r\n"}))
            << counts;
    }
    EXPECT_GT(position, 40) << "reads in the life of a program";
}

} // namespace larkspin
