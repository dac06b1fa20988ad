// The tray icon and its menu.
#include "shell/window.h"
#include "support/talk.h"

namespace larkspin {

TEST(TrayMenu, SwitchesModesWithoutAWordAlsoInSilence) {
    VirtualMachine machine({"a.mp3", "b.mp3"}, 10s);
    machine.chooseFromTray("silnt");
    EXPECT_EQ(machine.trayEntry("silnt"), "*silent");
    machine.owner("'num 1");
    machine.forget();
    machine.chooseFromTray("rep");
    machine.chooseFromTray("cintz");
    EXPECT_EQ(machine.trayEntry("rep"), "repeat");
    EXPECT_EQ(machine.trayEntry("cintz"), "*continuous");
    EXPECT_TRUE(machine.state().Timer1.enabled());
    machine.advance(11s);
    EXPECT_EQ(machine.setting("play"), "b.mp3");
    EXPECT_EQ(machine.trayEntry("mpp"), "mp3s played:  1");
    machine.chooseFromTray("cintz");
    EXPECT_EQ(machine.trayEntry("cintz"), "continuous");
    EXPECT_FALSE(machine.state().Timer1.enabled());
    EXPECT_EQ(machine.allSaid(), Lines{});
    EXPECT_EQ(machine.dialogs.boxes, Lines{});
    EXPECT_FALSE(machine.chooseFromTray("exit"));
    EXPECT_FALSE(machine.desktop.icon.has_value());
}

TEST(TrayMenu, ChoosesOneFilterOfFive) {
    VirtualMachine machine(Lines{});
    EXPECT_EQ(machine.trayEntry("fmp3"), "*mp3");
    machine.chooseFromTray("fmid");
    EXPECT_EQ(machine.trayEntry("fmp3"), "mp3");
    EXPECT_EQ(machine.trayEntry("fmid"), "*midi");
    EXPECT_EQ(machine.trayEntry("scanpcf"), "scan pc for midi");
}

TEST(TrayMenu, ShowsTheMediaWindowOnTheSongLastStarted) {
    VirtualMachine machine({"a.mp3", "b.mp3", "c.mp3"});
    machine.owner("'num 1");
    machine.owner("'play c b");
    machine.state().setMasterIndex(2);
    machine.run([&] { machine.desktop.icon->onDoubleClick(); });
    EXPECT_TRUE(machine.window("mp3s").visible);
    EXPECT_EQ(machine.state().masterIndex(), 0);
    machine.run([&] { machine.desktop.icon->onDoubleClick(); });
    EXPECT_FALSE(machine.window("mp3s").visible);
    machine.chooseFromTray("mp3z");
    EXPECT_TRUE(machine.window("mp3s").visible);
    EXPECT_EQ(machine.trayEntry("mp3z"), "view 3 files");
}

TEST(TrayMenu, ScansEveryDriveAndAsksBeforeItTransfers) {
    VirtualMachine machine(Lines{});
    machine.song("rock", "a.mp3");
    machine.directories.driveTexts = {"q:"};
    machine.directories.behindDrives = machine.drive("music");
    machine.forget();
    for (const bool yes : {false, true}) {
        machine.dialogs.answers = {yes ? "yes" : "no"};
        machine.chooseFromTray("scanpcf");
        EXPECT_EQ(machine.lastBox(),
                  "found 1 mp3s in 1 directories, would you like to transfer them? or use add "
                  "string on the mp3s window to add individual songs");
        EXPECT_EQ(machine.trayEntry("mp3z"), yes ? "view 1 files" : "view 0 files");
    }
    EXPECT_EQ(machine.allSaid(), Lines{});
}

} // namespace larkspin
