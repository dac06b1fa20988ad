// The whole program in a terminal, on a real server, with somebody else in the room.
#include "support/child.h"
#include "support/irc_server.h"
#include "support/own_network.h"
#include "support/patience.h"
#include "support/temp_directory.h"

#include <csignal>
#include <gtest/gtest.h>

namespace larkspin {
namespace {

using namespace std::chrono_literals;

struct IrcProgramTest : testing::Test {
    void SetUp() override {
        if (!isAlone())
            GTEST_SKIP() << "needs a network of its own, which the system doesn't allow";
        disk.write("larkspin/larkspin.ini", "[lark]\r\nload=1\r\ntrigger='\r\n");
    }
    std::vector<std::string> variables() const {
        std::vector<std::string> all = ownHome(disk.path().native());
        all.insert(all.end(), {"TERM=xterm", "all_proxy=socks5://127.0.0.1:9"}); // isn't gone by
        return all;
    }
    std::unique_ptr<Child> startIn(const std::string& connect) const {
        auto program = Child::start(LARKSPIN_TTY, variables());
        EXPECT_TRUE(program->says("load:  <b>", patience));
        program->tell(connect);
        EXPECT_TRUE(program->says("[room] you are in #den", patience));
        return program;
    }
    static IrcPerson inDen(const std::string& nick) {
        IrcPerson person(nick);
        person.send("JOIN #den");
        EXPECT_NE(person.hears(" 366 "), "");
        return person;
    }
    // What is said there next, as it stands on the wire after the channel.
    static std::string said(IrcPerson& listener) {
        const std::string line = listener.hears("PRIVMSG #den :", patience);
        return line.substr(std::min(line.find(" :"), line.size() - 2) + 2);
    }
    void expectVolume(Child& program, const std::string& volume) const { // as it ends
        program.tell("/quit");
        EXPECT_EQ(program.ends(patience), 0);
        const std::string all = disk.read("larkspin/larkspin.ini");
        EXPECT_NE(all.find("\nvolume=" + volume + "\r"), std::string::npos) << all;
    }
    std::string history() const { return disk.read("larkspin/history.txt"); }

    TempDirectory disk;
};

TEST_F(IrcProgramTest, ObeysItsOwnerInAFullRoomAndComesBackToItInTheNextRun) {
    LocalIrcServer server;
    IrcPerson bob = inDen("bob");
    auto program = startIn("/connect irc.test jo #den");
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
    terminal->write("/login jo\n");
    EXPECT_TRUE(terminal->shows("password of jo: ", patience));
    terminal->write("sesam\x03");
    EXPECT_TRUE(terminal->shows("without a password all stays as it was", patience));
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
    EXPECT_EQ(history(), "/connect plain irc.test jo #den\n/login jo\n/login jo keep\n/nick joe\n");
}

TEST_F(IrcProgramTest, SaysAndHearsWithAndWithoutTls) {
    LocalIrcServer server;
    IrcPerson bob = inDen("bob");
    auto program = startIn("/connect plain irc.test jo #den");
    for (const std::string port : {"6667", "6697"}) {
        bob.send("PRIVMSG #den :\x02hi\x02 <b>\x1b[2J\x9B\u0085\u2028\u202E");
        EXPECT_EQ(program->line(patience), "bob: <b>hi</b> <\u200C"
                                           "b>\uFFFD[2J\uFFFD\uFFFD\uFFFD\uFFFD");
        program->tell("oh <b>you</b>");
        EXPECT_EQ(said(bob), "oh \x02you");
        EXPECT_NE(disk.read("larkspin/irc.txt").find("port=" + port + '\n'), std::string::npos);
        program->tell("/connect irc.test jo #den");
        EXPECT_NE(bob.hears("QUIT :\"larkspin flies off\""), "");
        EXPECT_TRUE(program->says("[room] you are in #den", patience));
    }
    std::string words;
    for (int word = 1; words.size() < 600; ++word)
        words += (words.empty() ? "" : " ") + std::to_string(word);
    program->tell(words);
    const std::string first = said(bob);
    EXPECT_EQ(first + ' ' + said(bob), words);
    EXPECT_EQ(std::filesystem::status(disk.path() / "larkspin/irc.txt").permissions(),
              std::filesystem::perms(0600));
    program->tell("/quit");
    EXPECT_NE(bob.hears("PART #den :larkspin flies off"), "");
    EXPECT_EQ(program->ends(patience), 0);
}

TEST_F(IrcProgramTest, PutsOutWhomItMayAndIgnoresAnybody) {
    LocalIrcServer server;
    IrcPerson bob = inDen("bob"), eve = inDen("eve"), dave = inDen("dave");
    bob.send("MODE #den +b eve!*@*\r\nKICK #den eve");
    const auto program = startIn("/connect irc.test jo #den");
    program->tell("'ban dave");
    EXPECT_TRUE(program->says("you aren't the owner, dumbass", patience));
    program->tell("'x bob");
    EXPECT_TRUE(program->says("<b>bob</b>, ignored bastard", patience));
    bob.send("PRIVMSG #den :psst");
    EXPECT_NE(dave.hears("psst"), "");
    dave.send("PRIVMSG #den :hello");
    EXPECT_EQ(program->line(patience), "dave: hello");

    for (const auto& [command, mode] :
         {std::pair("'unban eve", "-b eve!*@*"), {"'ban dave", "+b *!~dave@127.0.0.1"}}) {
        program->tell("/connect");
        EXPECT_TRUE(program->says("[room] you are in #den", patience));
        bob.send("MODE #den +o jo");
        EXPECT_TRUE(program->says("bob sets +o jo", patience));
        EXPECT_NE(bob.hears("MODE #den +o jo"), "");
        program->tell(command);
        EXPECT_NE(bob.hears(mode), "");
    }
    EXPECT_NE(dave.hears("KICK #den dave"), "");
    EXPECT_TRUE(program->says("<b>dave</b>, ejected bastard", patience));
    dave.send("JOIN #den");
    EXPECT_NE(dave.hears(" 474 "), "");
    eve.send("JOIN #den");
    EXPECT_NE(eve.hears(" 366 "), "");
}

TEST_F(IrcProgramTest, IsWhoeverTheServerSaysThatItIs) {
    LocalIrcServer server;
    IrcPerson other = inDen("jo");
    const auto program = startIn("/connect irc.test jo #den");
    other.send("PRIVMSG #den :'volume 99");
    EXPECT_TRUE(program->says("jo: 'volume 99", patience));
    program->tell("'volume 7");
    EXPECT_EQ(other.hears("PRIVMSG"), ":jo_!~larkspin@127.0.0.1 PRIVMSG #den :'volume 7");
    EXPECT_TRUE(program->says("volume set", patience));
    expectVolume(*program, "7");
}

TEST_F(IrcProgramTest, NothingThatOthersSendIsACommand) {
    LocalIrcServer server;
    IrcPerson eve = inDen("eve");
    eve.send("NICK jo{"); // to this server, another name than the owner's
    const auto program = startIn("/connect irc.test jo[ #den");
    program->tell("'volume 7");
    EXPECT_TRUE(program->says("volume set", patience));
    program->tell("/join #attic");
    EXPECT_TRUE(program->says("#attic is room 2", patience));
    eve.send("JOIN #attic");
    for (const char* line :
         {"PRIVMSG #den :'volume 99", "PRIVMSG #den :jo[: 'volume 99", "PRIVMSG jo[ :'volume 99",
          "NOTICE jo[ :'volume 99", "NOTICE #den :'volume 99", "PRIVMSG #attic :'volume 99",
          "PRIVMSG #den,jo[ :'volume 99",
          "PRIVMSG #den :\x01"
          "ACTION 'volume 99\x01",
          "PRIVMSG jo[ :\x01"
          "PING 'volume 99\x01",
          "TOPIC #den :'volume 99", "PRIVMSG #den :\r'volume 99",
          "PRIVMSG #den :\xE2\x80\xA8'volume 99", "PRIVMSG #den :</html>\nPRIVMSG #den :'volume 99",
          "PART #attic :'volume 99",
          "PRIVMSG #den :x\r\n:jo[!~larkspin@127.0.0.1 PRIVMSG #den :'volume 99"})
        eve.send(line);
    EXPECT_TRUE(program->says("jo{ goes", patience)); // the last one was too much for the server
    IrcPerson bob = inDen("bob");
    program->tell("over");
    EXPECT_EQ(said(bob), "over");
    expectVolume(*program, "7");
}

TEST_F(IrcProgramTest, AServerThatComesBackHearsNothingTwiceAndNothingLate) {
    LocalIrcServer server;
    const auto program = startIn("/connect irc.test jo #den");
    program->tell("/join #attic\n'ver\n1\n2\n3\n4\n5\n6");
    EXPECT_TRUE(program->says("jo: 6", patience));
    server.kill();
    EXPECT_TRUE(program->says("trying again in 5 seconds", patience));
    program->tell("'volume 99");
    EXPECT_TRUE(program->says("[room] you are not connected", patience));
    EXPECT_TRUE(server.start());
    IrcPerson bob = inDen("bob");
    EXPECT_TRUE(program->says("[room] you are in #den", patience));
    EXPECT_TRUE(program->says("[room] #attic is room 2", patience));
    program->tell("'volume 7");
    EXPECT_EQ(said(bob), "'volume 7");
    expectVolume(*program, "7");
}

TEST_F(IrcProgramTest, AnswersItsOwnerInAFlood) {
    LocalIrcServer server;
    IrcPerson bob = inDen("bob");
    const auto program = startIn("/connect irc.test jo #den");
    for (int line = 0; line < 10'000; ++line) {
        bob.send("PRIVMSG #den :'volume 99");
        if (line == 5'000)
            program->tell("'ver");
    }
    EXPECT_EQ(said(bob), "'ver");
    EXPECT_NE(said(bob).find("version "), std::string::npos);
    bob.send("PRIVMSG #den :over");
    EXPECT_TRUE(program->says("bob: over", patience));
}

} // namespace
} // namespace larkspin
