#include "shell/window.h"
#include "support/talk.h"

namespace larkspin {

namespace {

// What shows of the state; the flags as one text.
Lines shown(const AppState& s) {
    std::string flags;
    for (const bool flag : {s.silnt, s.rep, s.crand, s.cintz, s.rol})
        flags += flag ? 'x' : '-';
    return {flags,   s.trigger,      s.loads,         s.mpp,           s.playlistTitle,  s.mp3z,
            s.noted, s.tempoCaption, s.volumeCaption, s.playedSeconds, s.programSeconds, s.scanpcf};
}

} // namespace

TEST(Startup, WelcomesTheOwnerTheFirstTimeAndRemembersTheDay) {
    VirtualMachine machine;
    ASSERT_TRUE(machine.start());
    ASSERT_EQ(machine.dialogs.boxes.size(), 1u);
    EXPECT_TRUE(machine.lastBox().starts_with("this must be your first time running"));
    EXPECT_EQ(machine.allSaid(),
              (Lines{"larkspin player - by moraine", "load:  <b>1</b> - mp3s played:  <b>0</b>"}));
    EXPECT_EQ(machine.setting("load"), "2"); // stored at once, in case it is killed
    EXPECT_EQ(machine.setting("trigger"), "'");
    EXPECT_EQ(machine.setting("first load"), "Friday, December 19, 2003 at 07:05 pm");
}

TEST(Startup, BringsBackAllOfTheLastRun) {
    VirtualMachine machine;
    const std::string settings =
        "[lark]\r\ntrigger=.\r\nsilent=yes\r\nrepeat=no\r\nshuffle=yes\r\ncontinue=no\r\n"
        "tempo=150\r\nvolume=0\r\nmedia filter=all types\r\nplayed=12\r\nplay=b.mp3\r\n"
        "mp3sec=100\r\nprogsec=200.5\r\nref on load=yes\r\nscan pc on load=yes\r\nmp3svis=yes\r\n"
        "mp3stpos=1\r\nmp3slpos=2\r\nmp3smini=yes\r\nmy own=line\r\ntitlebar words=1\r\n"
        "titlebar=2\r\nwords/labels=3\r\nbackground=4\r\nplay controls=5\r\nload=";
    machine.writeDataFile("larkspin.ini", settings + "41\r\n");
    for (const char* name : {"larkmain.lpb", "lksapp.lst", "lksappl.lst"})
        machine.writeDataFile(name, "one\n\n" + std::string(name));
    machine.playlist({"b.mp3", "A.mp3"});
    machine.start();
    EXPECT_EQ(machine.allSaid(),
              (Lines{"larkspin player - by moraine", "load:  <b>41</b> - mp3s played:  <b>12</b>"}))
        << "also after a silent run";
    EXPECT_EQ(
        shown(machine.state()),
        (Lines{"x-x-x", ".", "load number:  41", "mp3s played:  12",
               std::string(unnamedPlaylistTitle), "view 2 files", "view 2 notes",
               "       tempo:  150", "     volume:  0", "100", "201.5", "scan pc for all types"}))
        << "a second passes while the refresh is shown";
    EXPECT_TRUE(machine.player.mute);
    EXPECT_EQ(machine.player.rate, 1.5);
    EXPECT_FALSE(machine.owner(".exit"));
    std::string later = settings;
    later.replace(later.find("200.5"), 5, "201.5");
    EXPECT_EQ(machine.dataFile("larkspin.ini"), later + "42\r\n");
    EXPECT_EQ(machine.dataFile("larkmain.lpb"), "one\r\nlarkmain.lpb\r\n");
    for (const std::string name : {"lksapp.lst", "lksappl.lst"})
        EXPECT_EQ(machine.dataFile(name), "one\r\n\r\n" + name + "\r\n");
    EXPECT_EQ(machine.dataFile("temp.lst"),
              machine.song("rock", "A.mp3") + "\r\n" + machine.song("rock", "b.mp3") + "\r\n");
}

TEST(Startup, TakesOddValuesAsTheyAreMeant) {
    VirtualMachine machine;
    machine.writeDataFile("larkspin.ini",
                          "[lark]\nload=-2.5\nsilent=maybe\nrepeat=YES\nref on load=1\n"
                          "tempo=201\nvolume=loud\nmp3sec=many\nprogsec=012.50\nplayed=x\n"
                          "media filter=real\nplaylist=gone.lkl\n");
    machine.playlist({"a.mp3"});
    machine.start();
    EXPECT_EQ(shown(machine.state()),
              (Lines{"-----", "", "load number:  -2.5", "mp3s played:  0", " playlist:  gone.lkl",
                     "view 0 files", "view 0 notes", "       tempo:  100", "     volume:  50", "0",
                     "12.5", "scan pc for mp3"}));
    machine.writeDataFile("larkspin.ini", "[lark]\nload=x\ntrigger=.\ntempo=-1\nvolume=49.5\n");
    machine.start();
    EXPECT_EQ(machine.dialogs.boxes.size(), 1u) << "without a number of loads it's a first run";
    EXPECT_EQ(shown(machine.state()),
              (Lines{"-----", "'", "load number:  1", "mp3s played:  0",
                     std::string(unnamedPlaylistTitle), "view 1 files", "view 0 notes",
                     "       tempo:  100", "     volume:  50", "0", "0", "scan pc for mp3"}));
}

TEST(Startup, TakesOneModeAtMost) {
    for (const auto& [stored, modes] :
         std::map<std::string, std::string>{{"repeat=yes\nshuffle=yes\ncontinue=yes\n", "x--"},
                                            {"shuffle=yes\ncontinue=yes\n", "-x-"},
                                            {"continue=yes\n", "--x"}}) {
        VirtualMachine machine;
        machine.writeDataFile("larkspin.ini", "[lark]\nload=3\n" + stored);
        machine.start();
        EXPECT_EQ(shown(machine.state()).front(), "-" + modes + "-");
    }
}

TEST(Startup, IsNoFirstRunWhenTheSettingsCantBeRead) {
    VirtualMachine machine;
    machine.writeDataFile("larkspin.ini", "[lark]\nload=3\ntrigger=.\n");
    machine.files.broken = "larkspin.ini";
    machine.start();
    EXPECT_EQ(machine.dialogs.boxes, Lines{});
    EXPECT_SAID(machine, "couldn't load <b>settings</b>:  the disk can't be read");
}

TEST(Startup, KeepsANamedPlaylistApart) {
    VirtualMachine machine;
    machine.playlist({"z.mp3", "a.mp3"});
    const std::string unnamed = machine.dataFile("temp.lst");
    const std::string named = machine.song("pop", "c.mp3") + "\n" + machine.song("pop", "b.mp3");
    machine.writeDataFile("My own.lkl", named);
    machine.writeDataFile("larkspin.ini", "[lark]\nplaylist=My own.lkl\nload=3\ntrigger='\n");
    machine.start();
    EXPECT_EQ(machine.answer("'next"), "next:  <b>1</b>.  b");
    EXPECT_EQ(machine.state().p, Lines{"My own.lkl"});
    EXPECT_FALSE(machine.owner("'exit"));
    EXPECT_EQ(machine.setting("playlist"), "My own.lkl");
    EXPECT_EQ(machine.dataFile("My own.lkl"), named);
    EXPECT_EQ(machine.dataFile("temp.lst"), unnamed);
}

TEST(Startup, ShowsHowFarItHasCome) {
    VirtualMachine machine;
    machine.fadesWindows = true;
    Lines seen;
    std::string last;
    machine.loop.every(50us, [&] {
        Window& dire = machine.window("dire");
        const Control& line = dire.control("statusLine");
        const std::string now = (line.visible ? " shown: " : " ") + line.text();
        if (now != last && dire.visible)
            seen.push_back(std::to_string(dire.alpha) + now);
        last = now;
    });
    machine.start();
    EXPECT_EQ(seen,
              (Lines{"1 shown: (build 11) Loading...", "100 shown: (build 11) Applying Settings...",
                     "200 shown: (build 11) Starting Up...", "255 shown: (build 11) Loading..",
                     "255 (build 11) Loading.."}));
    EXPECT_FALSE(machine.window("dire").visible);
}

TEST(Clock, CountsSecondsOverAllRuns) {
    VirtualMachine machine({"a.mp3"}, 100s);
    machine.advance(3600s);
    EXPECT_EQ(machine.state().programSeconds, "3600");
    EXPECT_EQ(machine.state().playedSeconds, "0");
    machine.owner("'num 1", 30s);
    machine.owner("'pause", 1000s);
    machine.dialogs.answers = {machine.drive("music/rock/a.mp3")};
    machine.click("mp3s", "openButton"); // which leaves the mark of the pause where it is
    machine.advance(5s);
    machine.owner("'resume", 10s);
    machine.owner("'stop", 10s);
    machine.owner("'exit");
    EXPECT_EQ(machine.setting("progsec"), "4655");
    EXPECT_EQ(machine.setting("mp3sec"), "40");
}

} // namespace larkspin
