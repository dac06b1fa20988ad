// What stands on the media window, worked as the owner does.
#include "shell/window.h"
#include "support/talk.h"

namespace larkspin {

TEST(MediaControls, OpenAFileThatIsOnNoList) {
    VirtualMachine machine({"a.mp3"}, 10s);
    machine.song("new", "Found.wav", 10s);
    const std::string path = machine.drive("music/new/Found.wav");
    machine.owner("'num 1");
    machine.player.volume = 1;
    machine.forget();
    machine.click("mp3s", "openButton");
    EXPECT_EQ(machine.said(), "") << "dismissed";
    machine.dialogs.answers = {path};
    machine.click("mp3s", "openButton");
    EXPECT_EQ(machine.dialogs.titles.back(), "Open a media file");
    EXPECT_EQ(machine.allSaid(), Lines{"playing:  Found"});
    EXPECT_EQ(machine.player.opened.back(), path);
    EXPECT_EQ(machine.player.volume, 1) << "no volume is sent";
    EXPECT_EQ(machine.trayEntry("playtz"), "played n/a times");
    EXPECT_EQ(machine.setting("play"), "a.mp3");
    converse(machine, {Turn("'pause", "paused:  Found"), Turn("'resume", "resumed:  Found"),
                       Turn("'repeat", "repeat - <b>on")});
    EXPECT_EQ(machine.saidWithin(11s), Lines{"repeat:  Found"});
    EXPECT_EQ(machine.player.opened.back(), path);
    EXPECT_EQ(machine.answer("'next"), "next:  <b>1</b>.  a");
    EXPECT_EQ(machine.answer("'pause"), "paused:  a");
}

TEST(MediaControls, AddWhatTheLastScanFoundByAString) {
    VirtualMachine machine(Lines{});
    machine.song("rock", "one.mp3");
    machine.song("pop", "two.mp3");
    machine.owner("'scan " + machine.drive("music"));
    machine.dialogs.answers = {"ROCK"};
    machine.click("mp3s", "Command1");
    machine.chooseFromPopup("adstr");
    EXPECT_EQ(machine.dialogs.titles.back(), "string adder");
    EXPECT_EQ(machine.window("mp3s").control("fileCountLabel").text(), "1 files");
    EXPECT_EQ(machine.answer("'next"), "next:  <b>1</b>.  one");
}

TEST(MediaControls, HintInTheTitleUnlessItIsAClock) {
    VirtualMachine machine(Lines{});
    Window& mp3s = machine.window("mp3s");
    const auto title = [&] { return mp3s.control("mediaCaption").text(); };
    mp3s.control("openButton").onMouseMove();
    EXPECT_EQ(title(), "  open a media file");
    mp3s.control("mediaCaption").onMouseMove();
    EXPECT_EQ(title(), "  [double click to resize]");
    machine.doubleClick("mp3s", "mediaCaption");
    mp3s.control("openButton").onMouseMove();
    EXPECT_EQ(title(), "  [double click to resize]");
}

} // namespace larkspin
