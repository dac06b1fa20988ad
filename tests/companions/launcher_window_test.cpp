// The launcher's window, worked by hand.
#include "shell/control_events.h"
#include "support/talk.h"

namespace larkspin {
namespace {

const std::string title = "                       applications n shit";

struct Appz : VirtualMachine {
    Appz() : VirtualMachine(Lines{}) {
        says({"'ap c:\\a.jpg, one", "'ap c:\\b.exe, two", "'ap c:\\c, one", "'apps"});
        forget();
    }
    Window& appz() { return window("appz"); }
    std::string shown(const char* control) { return appz().control(control).text(); }
    std::string path(int row) { return std::string(state().appPaths.row(row)); }
    int count() { return state().appTitles.count(); }
    // Runs this while the next box is open.
    void meanwhile(const Task& happens) {
        dialogs.whileOpen = [this, happens] {
            dialogs.whileOpen = [] {};
            happens();
        };
    }
};

TEST(LauncherWindow, ComesByCommandAndFromTheTray) {
    Appz machine;
    EXPECT_TRUE(machine.appz().onTop);
    press(machine.appz(), "Label2");
    EXPECT_FALSE(machine.appz().visible);
    EXPECT_EQ(machine.answer("'apps"), "viewing applications n shit");
    EXPECT_TRUE(machine.appz().visible);
    mouseDown(machine.appz(), "Label1");
    EXPECT_TRUE(machine.appz().dragged);
    for (const char* below : {"List1", "Text1"}) {
        hover(machine.appz(), "Label1");
        EXPECT_EQ(machine.shown("Label1"), "                     dbl click an item to load");
        hover(machine.appz(), below);
        EXPECT_EQ(machine.shown("Label1"), title);
    }
    hover(machine.appz(), "Label1");
    machine.restart();
    EXPECT_FALSE(machine.appz().visible);
    machine.chooseFromTray("appsz");
    EXPECT_TRUE(machine.appz().visible);
    EXPECT_EQ(machine.shown("Label1"), title);
}

TEST(LauncherWindow, ShowsAPathAtAClickAndStartsAtADoubleClick) {
    Appz machine;
    press(machine.appz(), "List1", 1);
    EXPECT_EQ(machine.shown("Text1"), "c:\\b.exe");
    EXPECT_EQ(machine.state().appPaths.currentIndex(), 1);
    pressTwice(machine.appz(), "List1", 0);
    EXPECT_EQ(machine.said(), "loading... <b>one");
    machine.owner("'silent");
    pressTwice(machine.appz(), "List1", 1);
    EXPECT_EQ(machine.launching.started, (Lines{"open c:\\a.jpg", "run c:\\b.exe"}));
}

TEST(LauncherWindow, AddsAFileFromDiskUnderAName) {
    Appz machine;
    for (const std::deque<std::string>& answers :
         {std::deque<std::string>{}, {"c:\\pics\\", "x"}, {"c:\\pics\\me.jpg"}}) {
        machine.dialogs.answers = answers;
        press(machine.appz(), "Label3");
    }
    EXPECT_EQ(machine.count(), 3);
    machine.dialogs.answers = {"c:\\inner", "inner", "c:\\outer", "outer"};
    machine.meanwhile([&] { press(machine.appz(), "Label3"); });
    press(machine.appz(), "Label3");
    EXPECT_EQ(machine.path(3), "c:\\inner");
    EXPECT_EQ(machine.path(4), "c:\\outer");
    EXPECT_EQ(machine.state().appTitles.row(4), "outer");
    EXPECT_EQ(machine.trayEntry("appsz"), "view 5 app items");
    EXPECT_EQ(machine.allSaid(), Lines{});
}

TEST(LauncherWindow, DeletesTheItemThatItAskedAbout) {
    Appz machine;
    const auto strikeDelete = [&] { pressKey(machine.appz(), "List1", Key::del); };
    strikeDelete();
    EXPECT_EQ(machine.dialogs.boxes, Lines{}) << "none is selected";
    press(machine.appz(), "List1", 2);
    strikeDelete();
    EXPECT_EQ(machine.lastBox(), "do you really wanna delete one:c:\\c?");
    EXPECT_EQ(machine.count(), 3);
    machine.dialogs.answers = {"yes", "yes"};
    machine.meanwhile([&] {
        machine.says({"'rmva two", "'ap c:\\c, one"});
        machine.meanwhile([&] { press(machine.appz(), "List1", 0); });
        strikeDelete(); // once more, for the same item
        press(machine.appz(), "Label2");
    });
    strikeDelete();
    EXPECT_EQ(machine.count(), 2);
    EXPECT_EQ(machine.path(0), "c:\\a.jpg");
    EXPECT_EQ(machine.path(1), "c:\\c");
    EXPECT_EQ(machine.shown("Text1"), "");
    EXPECT_EQ(machine.trayEntry("appsz"), "view 2 app items");
}

} // namespace
} // namespace larkspin
