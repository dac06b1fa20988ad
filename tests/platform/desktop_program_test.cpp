// The desktop program as a child process, on a display of its own: how it starts, how it ends, and
// its tray icon on a real tray.
#include "support/child.h"
#include "support/temp_directory.h"
#include "support/x_server.h"

#include <csignal>
#include <gtest/gtest.h>
#include <thread>

namespace larkspin {
namespace {

using namespace std::chrono_literals;

constexpr auto patience = 20s;

class DesktopProgramTest : public testing::Test {
protected:
    // A home of its own, no sound device, no bus and no desktop.
    std::vector<std::string> variables(const std::string& display) const {
        const std::string home = disk.path().native();
        return {"HOME=" + home,
                "XDG_DATA_HOME=" + home,
                "XDG_CONFIG_HOME=" + home,
                "XDG_RUNTIME_DIR=" + home,
                "PULSE_SERVER=none",
                "PIPEWIRE_REMOTE=none",
                "ALSA_CONFIG_PATH=/dev/null",
                "DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent",
                "DBUS_SYSTEM_BUS_ADDRESS=unix:path=/nonexistent",
                "LSAN_OPTIONS=detect_leaks=0",
                "WAYLAND_DISPLAY=",
                "QT_QPA_PLATFORM=",
                "QT_QPA_PLATFORMTHEME=",
                "DISPLAY=" + display};
    }
    // With its errors in its output.
    std::unique_ptr<Child> start(const std::string& display) const {
        return Child::start("sh", variables(display), {"-c", "exec " LARKSPIN_DESKTOP " 2>&1"});
    }
    // Where no window without a place of its own stands.
    void startTray() {
        tray = Child::start("trayer", {"DISPLAY=" + server->display()},
                            {"--edge", "bottom", "--align", "left", "--widthtype", "request",
                             "--heighttype", "pixel", "--height", "24"});
    }
    // Past the box that welcomes him the first time.
    std::unique_ptr<Child> welcomed() {
        auto child = start(server->display());
        turnTo("^larkspin$");
        press({"Return"});
        return child;
    }
    template <typename Condition> static bool comes(Condition condition) {
        const auto until = std::chrono::steady_clock::now() + patience;
        while (!condition() && std::chrono::steady_clock::now() < until)
            std::this_thread::sleep_for(50ms);
        return condition();
    }
    bool isSeen(const std::string& title) const {
        return server->hand({"search", "--onlyvisible", "--name", title});
    }
    bool sees(const std::string& title) const {
        return comes([&] { return isSeen(title); });
    }
    // Without a window manager, which window has the keyboard last is a matter of luck.
    void turnTo(const std::string& title) const {
        EXPECT_TRUE(sees(title));
        EXPECT_TRUE(server->hand(
            {"search", "--onlyvisible", "--name", title, "windowfocus", "--sync", "%1"}));
    }
    // Once it is there. The menu bears the name by which the program knows it.
    void rightClickIcon() const {
        EXPECT_TRUE(comes([&] {
            return isSeen("^file$") ||
                   (server->hand({"mousemove", "12", "756", "click", "3", "sleep", "0.3"}) &&
                    isSeen("^file$"));
        }));
    }
    void press(std::initializer_list<const char*> keys) const {
        std::vector<std::string> does = {"key"};
        does.insert(does.end(), keys.begin(), keys.end());
        EXPECT_TRUE(server->hand(does));
    }
    bool hasSaved(const std::string& setting = "\nvolume=50") const {
        return disk.read("larkspin/larkspin.ini").find(setting) != std::string::npos;
    }

    TempDirectory disk;
    std::unique_ptr<Child> tray; // ends with the display
    std::unique_ptr<XServer> server = std::make_unique<XServer>();
};

TEST_F(DesktopProgramTest, NamesTheOtherProgramWhereThereIsNoDisplay) {
    for (const char* const display : {"", ":4711"}) {
        const auto child = start(display);
        EXPECT_TRUE(child->says("no display to show windows on; larkspin-tty", patience));
        EXPECT_EQ(child->ends(patience), 1);
    }
    EXPECT_EQ(disk.read("larkspin/larkspin.ini"), "");
}

TEST_F(DesktopProgramTest, ShowsTheMediaWindowWhereThereIsNoTrayAndSavesWhenToldToEnd) {
    const auto child = welcomed();
    EXPECT_TRUE(sees("^larkspin media$"));
    ::kill(child->id(), SIGTERM);
    EXPECT_EQ(child->ends(patience), 0);
    EXPECT_TRUE(hasSaved());
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

TEST_F(DesktopProgramTest, SavesWhenItsDisplayIsGone) {
    startTray();
    const auto child = welcomed();
    rightClickIcon();
    server->kill();
    EXPECT_EQ(child->ends(patience), 0);
    EXPECT_TRUE(hasSaved());
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
