// The whole program in a terminal, on one real server, with somebody else in the room.
#include "support/irc_bouncer.h"
#include "support/irc_program.h"
#include "support/irc_services.h"

#include <csignal>
#include <gtest/gtest.h>

namespace larkspin {
namespace {

using namespace std::chrono_literals;

TEST_F(IrcProgramTest, APasswordIsNeitherShownNorSaidNorRemembered) {
    LocalIrcServer server;
    const auto program = Child::start(LARKSPIN_TTY, variables());
    program->tell("/login jo keep\n/quit s\xC3\xA9same"); // no word, although it looks like one
    EXPECT_TRUE(program->says("[password] password of jo", patience));
    EXPECT_EQ(program->line(patience), "[room] you log in as jo from the next /connect on");
    EXPECT_TRUE(disk.read("larkspin/irc.txt").ends_with("password=/quit s\xC3\xA9same\n"));
    program->endInput();
    EXPECT_EQ(program->rest(patience), "");

    const auto terminal = Child::startOnTerminal(LARKSPIN_TTY, variables(), {"--line"});
    EXPECT_TRUE(terminal->shows("load:", patience));
    terminal->tell("/connect plain irc.test jo #den");
    EXPECT_TRUE(terminal->shows("you are in #den", patience));
    terminal->write("/login jo\n");
    EXPECT_TRUE(terminal->shows("password of jo", patience));
    terminal->write("\n");
    EXPECT_TRUE(terminal->shows("without a password all stays as it was", patience));
    terminal->write("/login jo keep\n");
    EXPECT_TRUE(terminal->shows("password of jo", patience));
    terminal->write("seza\x7f\x7fsame\n/nick joe\n");
    const std::string shown = terminal->rest(2s);
    EXPECT_EQ(shown.find("sam"), std::string::npos);
    EXPECT_NE(shown.find("you log in as jo"), std::string::npos);
    EXPECT_TRUE(disk.read("larkspin/irc.txt").ends_with("password=sesame\n"));
    terminal->write("\x04");
    EXPECT_EQ(terminal->ends(patience), 0);
}

TEST_F(IrcProgramTest, WhatABouncerKeepsOrSaysForAnotherClientIsShownAndNotObeyed) {
    const LocalIrcServer server;
    IrcPerson bob = inDen("bob");
    const IrcBouncer bouncer;
    EXPECT_NE(bob.hears(" JOIN :#den", patience), "");
    IrcSocket phone(IrcBouncer::plainPort); // of the owner, too
    phone.send(std::string("PASS ") + IrcBouncer::password + "\r\nNICK jo\r\nUSER jo 0 * :jo");
    EXPECT_NE(phone.hears(" 366 "), "");
    phone.send("PRIVMSG #den :'volume 98\r\nPRIVMSG bob :'volume 95");
    EXPECT_NE(bob.hears("'volume 95"), "");
    bob.send("PRIVMSG #den :'volume 99\r\nPRIVMSG jo :'volume 97");
    EXPECT_NE(phone.hears("'volume 97"), "");

    const auto program = Child::start(LARKSPIN_TTY, variables());
    program->tell(std::string("/pass\n") + IrcBouncer::password +
                  "\n/connect irc.test:" + std::to_string(IrcBouncer::encryptedPort) + " jo");
    EXPECT_TRUE(program->says("[room] you are in #den", patience));
    EXPECT_TRUE(program->says("jo: 'volume 98", patience));
    EXPECT_TRUE(program->says("bob: 'volume 99", patience));
    EXPECT_TRUE(program->says("bob whispers: 'volume 97", patience));
    phone.send("PRIVMSG #den :'volume 96\r\nPRIVMSG bob :'volume 94");
    EXPECT_TRUE(program->says("jo: 'volume 96", patience));
    program->tell("/room bob");
    EXPECT_TRUE(program->says("[room] you talk to bob", patience));
    EXPECT_TRUE(program->says("jo: 'volume 95", patience));
    EXPECT_TRUE(program->says("jo: 'volume 94", patience));
    program->tell("/room #den\n'volume 7");
    EXPECT_TRUE(program->says("volume set", patience));
    expectVolume(*program, "7");

    const auto terminal = Child::startOnTerminal(LARKSPIN_TTY, variables(), {"--line"});
    terminal->tell("/pass");
    EXPECT_TRUE(terminal->shows("password of", patience));
    terminal->tell(IrcBouncer::password + std::string("\n/connect"));
    EXPECT_TRUE(terminal->shows("\x1b[2m" + bouncer.year() + '-', patience));
    EXPECT_TRUE(terminal->shows(":", patience)); // of the time of day
    EXPECT_TRUE(terminal->shows("'volume 9", patience));
}

TEST_F(IrcProgramTest, LogsInToAnAccountThatServicesKeep) {
    const LocalIrcServer server(IrcFamily::inspircd);
    const IrcServices services("keeper", "AGpvAHNlc2FtZQ==");
    IrcPerson bob = inDen("bob");
    const struct {
        std::string password, told, account;
    } rows[] = {{"guess", "you are not logged in: SASL authentication failed", ""},
                {"sesame", "you are in #den", ":irc.test 330 bob jo keeper :is logged in as"}};
    for (const auto& row : rows) {
        const auto program = Child::start(LARKSPIN_TTY, variables());
        program->tell("/login jo\n" + row.password + "\n/connect irc.test jo #den");
        EXPECT_TRUE(program->says("[room] " + row.told, patience));
        EXPECT_NE(bob.hears("JOIN :#den"), "");
        bob.send("WHOIS jo");
        EXPECT_EQ(bob.hears(row.account.empty() ? " 318 " : " 330 "),
                  row.account.empty() ? ":irc.test 318 bob jo :End of /WHOIS list." : row.account);
    }
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
        std::string heard; // the list of those who are kept out may be on its way yet
        for (int time = 0; heard.empty() && time < 3; ++time) {
            program->tell(command);
            heard = bob.hears(mode);
        }
        EXPECT_NE(heard, "");
    }
    EXPECT_NE(dave.hears("KICK #den dave"), "");
    EXPECT_TRUE(program->says("<b>dave</b>, ejected bastard", patience));
    dave.send("JOIN #den");
    EXPECT_NE(dave.hears(" 474 "), "");
    eve.send("JOIN #den");
    EXPECT_NE(eve.hears(" 366 "), "");
}

TEST_F(IrcProgramTest, AnswersItsOwnerInAFlood) {
    const LocalIrcServer server;
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
