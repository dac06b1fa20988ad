#include "support/talk.h"

#include <sys/stat.h>
#include <unistd.h>

namespace larkspin {

namespace {

// A run that writes all there is to write, told to the last word.
void live(VirtualMachine& machine) {
    ASSERT_TRUE(machine.start());
    converse(machine, {Turn("'next", "next:  <b>1</b>.  a"),
                       Turn("'tempo 150", "tempo set to <b>150</b> (fast)"),
                       Turn("'cont", "continuous play - <b>on")});
    EXPECT_EQ(machine.saidWithin(8s), Lines{"next:  <b>2</b>.  b"});
    EXPECT_FALSE(machine.owner("'exit"));
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
        live(machine);
        full = machine.files.full;
        const std::string counts = machine.dataFile("played.ini");
        EXPECT_TRUE(machine.dataFile("larkspin.ini").starts_with("[lark]\r\nload="));
        EXPECT_TRUE(machine.setting("played") == "5" || machine.setting("played") == "6");
        EXPECT_TRUE(counts.empty() || counts == "[times played]\r\na.mp3=1\r\n") << counts;
        EXPECT_EQ(machine.dataFile("temp.lst"), list);
        EXPECT_TRUE(full || machine.setting("tempo") == "150");
    }
}

TEST(FullDisk, LetsTheProgramLiveOnAReadOnlyDirectory) {
    VirtualMachine machine;
    const std::string settings = "[lark]\r\nload=3\r\ntrigger='\r\nplayed=5\r\n";
    machine.writeDataFile("larkspin.ini", settings);
    machine.playlist({"a.mp3", "b.mp3"}, 10s);
    ::chmod(machine.disk.path().c_str(), 0755);
    ::chmod((machine.disk.path() / "data").c_str(), 0555);
    const bool root = ::geteuid() == 0 && ::seteuid(65534) == 0; // root may write anywhere
    live(machine);
    EXPECT_TRUE(!root || ::seteuid(0) == 0);
    ::chmod((machine.disk.path() / "data").c_str(), 0755);
    EXPECT_EQ(machine.dataFile("larkspin.ini"), settings);
    EXPECT_EQ(machine.dataFile("played.ini"), "");
}

} // namespace larkspin
