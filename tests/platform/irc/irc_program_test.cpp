// The whole program in a terminal, on a real server, with somebody else in the room.
#include "support/irc_program.h"
#include "support/irc_services.h"

#include <csignal>
#include <gtest/gtest.h>

namespace larkspin {
namespace {

using namespace std::chrono_literals;

// What holds on the servers of every family.
class OnEveryServer : public IrcProgramTest, public testing::WithParamInterface<IrcFamily> {
protected:
    // ircd-hybrid passes on no last words of somebody who has just come.
    std::string parting() const {
        const bool hasWords = GetParam() != IrcFamily::hybrid;
        return std::string(" PART #den") + (hasWords ? " :larkspin flies off" : "");
    }
};

INSTANTIATE_TEST_SUITE_P(Families, OnEveryServer,
                         testing::Values(IrcFamily::ngircd, IrcFamily::inspircd, IrcFamily::hybrid),
                         [](const auto& test) { return nameOf(test.param); });

TEST_P(OnEveryServer, ObeysItsOwnerInAFullRoomAndComesBackToItInTheNextRun) {
    LocalIrcServer server(GetParam());
    IrcPerson bob = inDen("bob");
    auto program = startIn("/connect irc.test jo #den");
    bob.send("PRIVMSG #den :'volume 99");
    EXPECT_TRUE(program->says("bob: 'volume 99", patience));
    program->tell("'volume 7");
    EXPECT_NE(bob.hears("PRIVMSG #den :'volume 7"), "");
    EXPECT_NE(bob.hears("volume set:"), "");
    program->tell("'exit");
    EXPECT_NE(bob.hears("larkspin player - unload"), "");
    EXPECT_NE(bob.hears(parting()), "");
    EXPECT_EQ(program->ends(patience), 0);

    program = Child::start(LARKSPIN_TTY, variables());
    EXPECT_NE(bob.hears(" JOIN :#den", patience), "");
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
    EXPECT_EQ(file("history.txt"),
              "/connect plain irc.test jo #den\n/login jo\n/login jo keep\n/nick joe\n");
}

TEST_P(OnEveryServer, SaysAndHearsWithAndWithoutTls) {
    LocalIrcServer server(GetParam());
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
        EXPECT_NE(bob.hears(" QUIT :"), "");
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
    EXPECT_NE(bob.hears(parting()), "");
    EXPECT_EQ(program->ends(patience), 0);
}

TEST_P(OnEveryServer, ChangesItsNameIsPutOutAndComesBack) {
    const LocalIrcServer server(GetParam());
    IrcPerson bob = inDen("bob");
    const auto program = startIn("/connect irc.test jo #den");
    bob.send("PRIVMSG jo :'volume 99");
    EXPECT_EQ(program->line(patience), "[room] bob whispers: 'volume 99");
    program->tell("/msg bob 'volume 99");
    EXPECT_NE(bob.hears(" PRIVMSG bob :'volume 99"), "");
    program->tell("/nick joe");
    EXPECT_TRUE(program->says("[room] you are now called joe", patience));
    bob.send("KICK #den joe :out");
    EXPECT_TRUE(program->says("[room] bob puts you out of #den: out", patience));
    program->tell("/join #den");
    EXPECT_TRUE(program->says("[room] you are in #den", patience));
    bob.send("PRIVMSG #den :before");
    EXPECT_EQ(program->line(patience), "bob: before");
    program->tell("'volume 7"); // seen once, whether the server sends it back or not
    EXPECT_EQ(program->line(patience), "joe: 'volume 7");
    EXPECT_TRUE(program->line(patience).starts_with("joe: "));
    EXPECT_NE(bob.hears(":joe!"), "");
    bob.send("PRIVMSG #den :after");
    EXPECT_EQ(program->line(patience), "bob: after");
    expectVolume(*program, "7");
}

TEST_P(OnEveryServer, ARecitalArrivesWholeWhileItsOwnerIsObeyed) {
    constexpr int count = 150;
    const std::string hurry = "LD_PRELOAD=" LARKSPIN_HURRY;
    const LocalIrcServer server(GetParam(), LocalIrcServer::Limits::usual, {hurry});
    std::string notes;
    for (int note = 1; note <= count; ++note)
        notes += "note " + std::to_string(note) + " about this and that\r\n";
    disk.write("larkspin/larkmain.lpb", notes);
    IrcPerson bob = inDen("bob");
    const auto program = startIn("/connect irc.test jo #den", {hurry});
    program->tell("'scrn");
    for (int note = 1; note <= count; ++note) {
        ASSERT_NE(bob.hears("note " + std::to_string(note) + ' ', patience), "") << note;
        if (note == count / 2)
            program->tell("/now 'volume 7");
    }
    expectVolume(*program, "7");
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

TEST_P(OnEveryServer, IsWhoeverTheServerSaysThatItIs) {
    LocalIrcServer server(GetParam());
    IrcPerson other = inDen("jo");
    const auto program = startIn("/connect irc.test jo #den");
    other.send("PRIVMSG #den :'volume 99");
    EXPECT_TRUE(program->says("jo: 'volume 99", patience));
    program->tell("'volume 7");
    EXPECT_TRUE(other.hears(" PRIVMSG #den :'volume 7").starts_with(":jo_!"));
    EXPECT_TRUE(program->says("volume set", patience));
    expectVolume(*program, "7");
}

TEST_P(OnEveryServer, NothingThatOthersSendIsACommand) {
    LocalIrcServer server(GetParam());
    IrcPerson eve = inDen("eve"), bob = inDen("bob");
    if (GetParam() == IrcFamily::ngircd)
        eve.send("NICK jo{"); // to the others the owner's name
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
    eve.send("PING :done");
    eve.hears("done"); // unless the last line was too much for the server
    bob.send("PRIVMSG #den :over");
    EXPECT_TRUE(program->says("bob: over", patience));
    expectVolume(*program, "7");
}

TEST_P(OnEveryServer, AServerThatComesBackHearsNothingTwiceAndNothingLate) {
    LocalIrcServer server(GetParam());
    const auto program = startIn("/connect irc.test jo #den");
    program->tell("/join #attic\n'ver\n1\n2\n3\n4\n5\n6");
    EXPECT_TRUE(program->says("jo: 1", patience));
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
    EXPECT_TRUE(program->says("volume set", patience));
    expectVolume(*program, "7");
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
