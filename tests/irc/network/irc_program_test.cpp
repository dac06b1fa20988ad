// The whole program in a terminal, on a real server, with somebody else in the room.
#include "support/child.h"
#include "support/irc_server.h"
#include "support/own_network.h"
#include "support/temp_directory.h"

#include <csignal>
#include <gtest/gtest.h>

namespace larkspin {
namespace {

using namespace std::chrono_literals;

class IrcProgramTest : public testing::Test {
protected:
    void SetUp() override {
        if (!isAlone())
            GTEST_SKIP() << "needs a network of its own, which the system doesn't allow";
        disk.write("larkspin/larkspin.ini", "[lark]\r\nload=1\r\ntrigger='\r\n");
    }
    std::vector<std::string> variables() const {
        const std::string home = disk.path().native();
        return {"HOME=" + home,
                "XDG_DATA_HOME=" + home,
                "XDG_RUNTIME_DIR=" + home,
                "PULSE_SERVER=none",
                "PIPEWIRE_REMOTE=none",
                "ALSA_CONFIG_PATH=/dev/null",
                "TERM=xterm",
                "DBUS_SESSION_BUS_ADDRESS=",
                "DBUS_SYSTEM_BUS_ADDRESS=no:",
                "LSAN_OPTIONS=detect_leaks=0:intercept_tls_get_addr=0"};
    }
    std::string history() const { return disk.read("larkspin/history.txt"); }

    static constexpr auto patience = 20s;
    TempDirectory disk;
};

TEST_F(IrcProgramTest, ObeysItsOwnerInAFullRoomAndComesBackToItInTheNextRun) {
    LocalIrcServer server;
    IrcPerson bob("bob");
    bob.send("JOIN #den");
    EXPECT_NE(bob.hears("JOIN"), "");
    auto program = Child::start(LARKSPIN_TTY, variables());
    EXPECT_TRUE(program->says("load:  <b>1</b>", patience));
    program->tell("/connect irc.test jo #den");
    EXPECT_TRUE(program->says("[room] you are in #den", patience));
    bob.send("PRIVMSG #den :'volume 99");
    EXPECT_TRUE(program->says("bob: 'volume 99", patience));
    program->tell("'volume 7");
    EXPECT_NE(bob.hears("PRIVMSG #den :'volume 7"), "");
    EXPECT_NE(bob.hears("volume set:"), "");
    program->tell("'exit");
    EXPECT_NE(bob.hears("larkspin player - unload"), "");
    EXPECT_NE(bob.hears("PART #den :larkspin flies off"), "");
    EXPECT_EQ(program->ends(patience), 0);

    program = Child::start(LARKSPIN_TTY, variables());
    EXPECT_NE(bob.hears("JOIN :#den", patience), "");
    EXPECT_TRUE(program->says("[room] you are in #den", patience));
    ::kill(program->id(), SIGTERM);
    EXPECT_NE(bob.hears("PART #den"), "");
    EXPECT_EQ(program->ends(patience), 0);
}

TEST_F(IrcProgramTest, APasswordIsNeitherShownNorSaidNorRemembered) {
    LocalIrcServer server;
    const auto program = Child::start(LARKSPIN_TTY, variables());
    program->tell("/login jo keep\n/quit s\xC3\xA9same"); // no word, although it looks like one
    EXPECT_TRUE(program->says("[password] password of jo", patience));
    EXPECT_EQ(program->line(patience), "[room] you log in as jo from the next /connect on");
    EXPECT_TRUE(disk.read("larkspin/irc.txt").ends_with("password=/quit s\xC3\xA9same\n"));
    program->endInput();
    EXPECT_EQ(program->rest(patience), "");

    const auto terminal = Child::startOnTerminal(LARKSPIN_TTY, variables());
    EXPECT_TRUE(terminal->shows("load:", patience));
    terminal->tell("/connect plain irc.test jo #den");
    EXPECT_TRUE(terminal->shows("you are in #den", patience));
    EXPECT_TRUE(terminal->shows("jo: ", patience)); // stands in front of what he types
    terminal->write("/login jo keep\nseza\x7f\x7fsam\xC3\xA9\x7f"
                    "e\n/nick joe\n"); // all at once
    EXPECT_TRUE(terminal->shows("password of jo: ", patience));
    const std::string shown = terminal->rest(2s);
    EXPECT_EQ(shown.find("sam"), std::string::npos);
    EXPECT_NE(shown.find("you log in as jo"), std::string::npos);
    EXPECT_NE(shown.find("joe: "), std::string::npos);
    EXPECT_TRUE(disk.read("larkspin/irc.txt").ends_with("password=sesame\n"));
    terminal->write("\x04");
    EXPECT_EQ(terminal->ends(patience), 0);
    EXPECT_EQ(history(), "/connect plain irc.test jo #den\n/login jo keep\n/nick joe\n");
}

} // namespace
} // namespace larkspin
