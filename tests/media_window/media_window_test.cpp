#include "app/program.h"
#include "shell/window.h"
#include "support/media_machine.h"

namespace larkspin {

TEST(MediaWindow, ComesBackAsItWasLeft) {
    VirtualMachine machine;
    machine.writeDataFile(
        "larkspin.ini",
        "[lark]\r\nload=3\r\ntrigger='\r\nmp3svis=yes\r\nmp3stpos=1200\r\nmp3slpos=-30\r\n");
    machine.start();
    Window& window = machine.window("mp3s");
    EXPECT_TRUE(window.visible);
    EXPECT_TRUE(window.onTop);
    EXPECT_EQ(window.place.top, 1200);
    EXPECT_EQ(window.place.left, -30);
    EXPECT_EQ(window.place.height, 2520);

    machine.doubleClick("mp3s", "mediaCaption");
    window.place.top = 4000;
    machine.owner("'exit");
    EXPECT_EQ(machine.setting("mp3smini"), "yes");
    EXPECT_EQ(machine.setting("mp3stpos"), "4000");

    machine.start();
    EXPECT_EQ(machine.window("mp3s").place.height, 315);
    machine.doubleClick("mp3s", "mediaCaption");
    EXPECT_EQ(machine.window("mp3s").place.height, 2520);
}

TEST(MediaWindow, NamesTheSongInItsMiniHeight) {
    MediaMachine machine(Lines{"a.mp3", "b.MP3", "c.wav"});
    machine.song("new", "Found.mp3");
    machine.pressTwice("mediaCaption");
    const auto hinted = [&] {
        EXPECT_TRUE(hover(machine.mp3s(), "mediaCaption"));
        return machine.shown("mediaCaption");
    };
    EXPECT_EQ(hinted(), "  song name not available");
    for (const auto& [line, name] :
         {std::pair("'num 1", "  a"), {"'num 2", "  b (.MP3)"}, {"'num 3", "  c (.wav)"}}) {
        machine.owner(line);
        EXPECT_EQ(hinted(), name);
    }
    machine.dialogs.answers = {machine.drive("music/new/Found.mp3")};
    machine.pressTwice("mediaCaption");
    machine.press("openButton");
    machine.pressTwice("mediaCaption");
    EXPECT_EQ(hinted(), "  Found.mp3");
    machine.owner("'stop");
    EXPECT_EQ(machine.shown("mediaCaption"), "  song length:  0:00");
}

// The splash window takes its place while a job runs.
TEST(MediaWindow, ComesBackFromASplashOnlyInItsOwnRun) {
    for (const char* button : {"Command5", "Command1"}) {
        MediaMachine machine;
        machine.song("rock", "new.mp3");
        const auto work = [&](const Task& within) {
            machine.owner("'scan " + machine.drive("music"));
            machine.dialogs.answers = {"new"};
            machine.loop.once(50ms, within);
            machine.press(button);
            if (machine.desktop.popup)
                machine.chooseFromPopup("adstr");
        };
        work([&] {
            machine.program->restart();
            machine.press("closeButton");
        });
        EXPECT_FALSE(machine.mp3s().visible);
        EXPECT_EQ(machine.state().masterList.count(), 3) << "without the new one";
        machine.owner("'media");
        work([&] { machine.program->end(); });
        EXPECT_FALSE(machine.program) << "has ended";
        EXPECT_EQ(machine.setting("mp3svis"), "yes");
    }
}

} // namespace larkspin
