#include "shell/window.h"
#include "support/talk.h"

namespace larkspin {

namespace {

Control& title(VirtualMachine& machine) {
    return machine.window("mp3s").control("mediaCaption");
}

} // namespace

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

    title(machine).onDoubleClick();
    title(machine).onMouseDown();
    EXPECT_TRUE(window.dragged);
    window.place.top = 4000;
    machine.owner("'exit");
    EXPECT_EQ(machine.setting("mp3smini"), "yes");
    EXPECT_EQ(machine.setting("mp3stpos"), "4000");

    machine.start();
    EXPECT_EQ(machine.window("mp3s").place.height, 315);
    title(machine).onDoubleClick();
    EXPECT_EQ(machine.window("mp3s").place.height, 2520);
}

TEST(MediaWindow, ServesAsAClockInItsMiniHeight) {
    VirtualMachine machine;
    machine.playlist({"ride.mp3"}, 187s);
    machine.start();
    EXPECT_EQ(title(machine).text(), "  [double click to resize]");
    machine.owner("'play ride", 65s);
    EXPECT_EQ(title(machine).text(), "  [double click to resize]");
    title(machine).onDoubleClick();
    machine.advance(1s);
    EXPECT_EQ(title(machine).text(), "  song position:  1:05 / 3:07");
    machine.owner("'stop");
    EXPECT_EQ(title(machine).text(), "  song length:  0:00");
}

} // namespace larkspin
