// The desktop program as a child process, on a display of its own: how it starts, how it ends, and
// its tray icon on a real tray.
#include "support/desktop_program.h"
#include "support/late_window_manager.h"
#include "support/session_manager.h"

#include <csignal>
#include <sysexits.h>

namespace larkspin {
namespace {

struct DesktopProgramTest : DesktopProgram {
    void TearDown() override { server->kill(); } // which ends the tray
    // At a place where no window is put that has no place of its own.
    void startTray() {
        tray = Child::start("trayer", {"DISPLAY=" + server->display()},
                            {"--edge", "bottom", "--align", "left", "--widthtype", "request",
                             "--heighttype", "pixel", "--height", "24"});
    }
    // Once it is there. The menu bears the name by which the program knows it.
    void rightClickIcon() const {
        EXPECT_TRUE(comes([&] {
            return isSeen("^file$") ||
                   (server->hand({"mousemove", "12", "756", "click", "3", "sleep", "0.3"}) &&
                    isSeen("^file$"));
        }));
    }
    std::unique_ptr<Child> tray;
};

TEST_F(DesktopProgramTest, NamesTheOtherProgramWhereThereIsNoDisplay) {
    for (const auto& [display, said] : {std::pair("", "no display"), {":4711", "not connect"}}) {
        const auto child = start(display);
        EXPECT_TRUE(child->shows(said, patience));
        EXPECT_TRUE(child->says("to show windows on; larkspin-tty", patience));
        EXPECT_EQ(child->ends(patience), EX_UNAVAILABLE);
    }
    EXPECT_EQ(disk.read("larkspin/larkspin.ini"), "");
}

TEST_F(DesktopProgramTest, DrawsWhereItsOwnerSaysByQtsVariables) {
    also = {"QT_QPA_PLATFORM=offscreen"};
    disk.write("larkspin/larkspin.ini", "[lark]\r\nload=1\r\n");
    const auto child = start(":4711");
    EXPECT_TRUE(comes([&] { return hasSaved("\nload=2"); }));
    ::kill(child->id(), SIGTERM);
    EXPECT_EQ(child->ends(patience), 0);
}

TEST_F(DesktopProgramTest, ShowsTheMediaWindowUntilThereIsATrayAndSavesWhenToldToEnd) {
    const auto child = welcomed();
    EXPECT_TRUE(sees("^larkspin media$"));
    startTray();
    rightClickIcon();
    ::kill(child->id(), SIGTERM);
    EXPECT_EQ(child->ends(patience), 0);
    EXPECT_TRUE(hasSaved());
}

TEST_F(DesktopProgramTest, ShowsWhereItCantGiveItsFilesToTheCopyThatRuns) {
    disk.write("larkspin/larkspin.ini", "[lark]\r\nload=1\r\nmp3svis=no\r\n");
    const auto first = start(server->display());
    EXPECT_TRUE(comes([&] { return hasSaved("\nload=2"); }));
    for (const bool isDismissed : {true, false}) {
        const auto second = start(server->display(), "ride.mp3");
        turnTo("^larkspin$");
        if (isDismissed)
            press({"Return"});
        else
            ::kill(second->id(), SIGTERM);
        EXPECT_EQ(second->ends(patience), 1);
        EXPECT_TRUE(second->says("can't be reached", patience));
    }
}

TEST_F(DesktopProgramTest, TakesLinesInItsRoom) {
    disk.write("larkspin/larkspin.ini", "[lark]\r\nload=1\r\ntrigger='\r\n");
    const auto child = start(server->display());
    // The greeting empties what is being typed.
    EXPECT_TRUE(comes([&] { return hasSaved("\nload=2"); }));
    turnTo("^larkspin - lobby$");
    for (const char* const line : {"'volume 30", "/quit"}) {
        EXPECT_TRUE(server->hand({"type", line}));
        press({"Return"});
    }
    EXPECT_EQ(child->ends(patience), 0);
    EXPECT_TRUE(hasSaved("\nvolume=30"));
    EXPECT_EQ(disk.read("larkspin/history.txt"), "'volume 30\n/quit\n");
}

// The wheel turns over the volume in the bar at the room's foot; the media window stands below.
TEST_F(DesktopProgramTest, HasABarForTheSongInPlayInItsRoom) {
    disk.write("larkspin/larkspin.ini", "[lark]\r\nload=1\r\nvolume=20\r\nmp3stpos=7800\r\n");
    const auto child = start(server->display());
    EXPECT_TRUE(sees("^larkspin media$")); // the start is over
    turnTo("^larkspin - lobby$");
    EXPECT_TRUE(server->hand({"search", "--onlyvisible", "--name", "^larkspin - lobby$",
                              "windowsize", "--sync", "%1", "700", "460", "mousemove", "--sync",
                              "--window", "%1", "577", "443", "click", "4", "type", "/quit"}));
    press({"Return"});
    EXPECT_EQ(child->ends(patience), 0);
    EXPECT_TRUE(hasSaved("\nvolume=26"));
}

TEST_F(DesktopProgramTest, LeavesNoSplashWindowWhereTheWindowManagerIsSlow) {
    disk.write("larkspin/larkspin.ini", "[lark]\r\nload=1\r\n");
    LateWindowManager manager(server->display());
    const auto child = start(server->display());
    // Which comes after the splash window has gone.
    EXPECT_TRUE(comes([&] { return manager.isAskedFor("larkspin media"); }));
    manager.catchUp();
    EXPECT_TRUE(sees("^larkspin - lobby$"));
    EXPECT_TRUE(sees("^larkspin media$"));
    EXPECT_FALSE(isSeen("^larkspin player$"));
    ::kill(child->id(), SIGTERM);
    EXPECT_EQ(child->ends(patience), 0);
}

TEST_F(DesktopProgramTest, SavesWhenItsDisplayIsGone) {
    startTray();
    const auto child = welcomed();
    rightClickIcon();
    server->kill();
    EXPECT_EQ(child->ends(patience), 0);
    EXPECT_TRUE(hasSaved());
}

TEST_F(DesktopProgramTest, SavesWhenItsSessionIsAboutToEndAndEndsWithIt) {
    SessionManager manager;
    also = {"SESSION_MANAGER=" + manager.address()};
    disk.write("larkspin/larkspin.ini", "[lark]\r\nload=1\r\n");
    const auto child = start(server->display());
    EXPECT_TRUE(comes([&] { return manager.hearsOf(0); }));
    EXPECT_TRUE(sees("^larkspin media$")); // from when on there is more to save than a load
    manager.askToSave();
    EXPECT_TRUE(comes([&] { return manager.hearsOf(1); }));
    EXPECT_TRUE(hasSaved());
    manager.end();
    EXPECT_EQ(child->ends(patience), 0);
}

TEST_F(DesktopProgramTest, WorksByTheTrayAlsoWhileABoxIsOpen) {
    startTray();
    const auto child = welcomed();
    rightClickIcon();
    press({"Up", "Up", "Up", "Up", "Up", "Up", "Return"});
    EXPECT_TRUE(sees("^lks version"));
    rightClickIcon();
    press({"Up", "Return"});
    EXPECT_EQ(child->ends(patience), 0);
    EXPECT_TRUE(hasSaved());
}

} // namespace
} // namespace larkspin
