// The tray icon and its menu.
#include "shell/window.h"
#include "support/talk.h"

namespace larkspin {

namespace {

// The tree as it shows: a line each for the entries of a menu, with the name in front where it
// can't be seen, then one for each menu below.
std::string outline(const std::vector<MenuEntry>& entries) {
    std::string line, below;
    for (const MenuEntry& entry : entries) {
        line += (line.empty() ? "" : ", ") + entry.name + ": " + entry.caption;
        if (!entry.children.empty())
            below += entry.name + " > " + outline(entry.children);
    }
    return line + '\n' + below;
}

} // namespace

TEST(TrayMenu, ReachesAllThereIs) {
    VirtualMachine machine({"a.mp3"});
    machine.writeDataFile("party.lkl", "");
    machine.restart();
    EXPECT_EQ(
        outline(machine.desktop.icon.value().menu.entries()),
        "cancel: cancel, a: -, mp3z: view 1 files, noted: view 0 notes, appsz: view 0 app items, "
        "playtz: played 0 times, plsts: playlists, aeoel: aol, pops: player options, "
        "otherz: other, mfilt: media filter, wnew: what's new, kissu: known issues, "
        "scanpcf: scan pc for mp3, comz: commands, rstartp: restart program, b: -, exit: exit\n"
        "plsts > numl: 1 playlists, p0: -, p1: party.lkl\n"
        "aeoel > hidewel: hide welcome, hplus: hide aolplus, z: -, upzon: upchat-on, "
        "upzoff: upchat-off, ustatz: upload stats, y: -, imo: ims on, imf: ims off\n"
        "pops > loads: load number:  2, mpp: mp3s played:  0, d: -, silnt: silent, rep: repeat, "
        "cintz: continuous, crand: shuffle, sinfo: song info, e: -, "
        "prtime: total program runtime, mptime: total played mp3 time\n"
        "otherz > rstarts: restart computer, m: -, pcinf: computer info, winup: windows uptime, "
        "fload: first loaded, epver: lks version, grtz: greets, spcol: scan pc on load, "
        "rol: refresh on load, cpc: change colors, j: -, shdown: shutdown computer\n"
        "mfilt > fmp3: mp3, fwma: wma, fwav: wav, fmid: midi, fallt: all types, fflac: flac, "
        "fogg: ogg, fopus: opus, fm4a: m4a, faac: aac, fape: ape, fwv: wavpack, fmpc: musepack, "
        "faiff: aiff, fany: any\n");
}

TEST(TrayMenu, TellsInBoxesAlsoInSilence) {
    VirtualMachine machine({"a.mp3"});
    machine.owner("'silent");
    machine.forget();
    const std::pair<const char*, const char*> boxes[] = {
        {"grtz", "to everyone who kept a room alive all night, "},
        {"wnew", "what's new? in this version, added a \"rec\" button to the media window "},
        {"kissu", "i know there are some issues and bugs "}};
    for (const auto& [entry, beginning] : boxes) {
        machine.chooseFromTray(entry);
        EXPECT_TRUE(machine.lastBox().starts_with(beginning)) << machine.lastBox();
    }
    EXPECT_EQ(machine.dialogs.titles, Lines{"lks version 4.3.11"});
    EXPECT_TRUE(machine.lastBox().ends_with("please report any bug to bugs@larkspin.invalid"));
    EXPECT_EQ(machine.allSaid(), Lines{});
}

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
    machine.says({"'num 1", "'play c b"});
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
