// What holds for the whole program in a terminal on the real servers of every family.
#include "support/irc_program.h"
#include "support/own_time.h"

#include <csignal>
#include <gtest/gtest.h>

namespace larkspin {
namespace {

class OnEveryServer : public IrcProgramTest, public testing::WithParamInterface<IrcFamily> {
protected:
    // InspIRCd looks only once a second whether somebody may come in.
    std::vector<std::string> variablesOfServer() const {
        return ownTime(GetParam() == IrcFamily::inspircd ? 10 : 1);
    }
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
    LocalIrcServer server(GetParam(), LocalIrcServer::Limits::none, variablesOfServer());
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

TEST_P(OnEveryServer, SaysAndHearsWithAndWithoutTls) {
    LocalIrcServer server(GetParam(), LocalIrcServer::Limits::none, variablesOfServer());
    IrcPerson bob = inDen("bob");
    auto program = startIn("/connect plain irc.test jo #den");
    for (const std::string port : {"6667", "6697"}) {
        bob.send("PRIVMSG #den :\x02hi\x02 <b>\x1b[2J\u0085\u2028\u202E");
        EXPECT_EQ(program->line(patience), "bob: <b>hi</b> <\u200C"
                                           "b>\uFFFD[2J\uFFFD\uFFFD\uFFFD");
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
    const LocalIrcServer server(GetParam(), LocalIrcServer::Limits::none, variablesOfServer());
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

TEST_P(OnEveryServer, IsWhoeverTheServerSaysThatItIs) {
    LocalIrcServer server(GetParam(), LocalIrcServer::Limits::none, variablesOfServer());
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
    LocalIrcServer server(GetParam(), LocalIrcServer::Limits::none, variablesOfServer());
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
    LocalIrcServer server(GetParam(), LocalIrcServer::Limits::none, variablesOfServer());
    const auto program = startIn("/connect irc.test jo #den", ownTime(5));
    program->tell("/join #attic\n'ver\n1\n2\n3\n4\n5\n6");
    EXPECT_TRUE(program->says("jo: 1", patience));
    server.kill();
    EXPECT_TRUE(program->says("trying again in 5 seconds", patience));
    program->tell("'volume 99"); // he is at home meanwhile
    EXPECT_TRUE(program->says("volume set:  <b>99", patience));
    EXPECT_TRUE(server.start());
    IrcPerson bob = inDen("bob");
    EXPECT_TRUE(program->says("[room] you are in #den", patience));
    EXPECT_TRUE(program->says("[room] #attic is room 2", patience));
    program->tell("'volume 7");
    EXPECT_EQ(said(bob), "'volume 7");
    EXPECT_TRUE(program->says("volume set", patience));
    expectVolume(*program, "7");
}

// Servers that count what is sent, as those of every family do unless their owner wants otherwise.
class OnAServerThatCounts : public IrcProgramTest, public testing::WithParamInterface<IrcFamily> {};

INSTANTIATE_TEST_SUITE_P(Families, OnAServerThatCounts,
                         testing::Values(IrcFamily::ngircd, IrcFamily::inspircd, IrcFamily::hybrid,
                                         IrcFamily::irc2),
                         [](const auto& test) { return nameOf(test.param); });

TEST_P(OnAServerThatCounts, ARecitalArrivesWholeWhileTheOwnerIsObeyed) {
    const int count = GetParam() == IrcFamily::irc2 ? 75 : 150; // which takes four seconds for each
    const std::vector<std::string> hurry = ownTime(20);
    const LocalIrcServer server(GetParam(), LocalIrcServer::Limits::usual, hurry);
    std::string notes;
    for (int note = 1; note <= count; ++note)
        notes += "note " + std::to_string(note) + ' ' +
                 std::string(static_cast<std::size_t>(note % 3 * 40), 'x') + "\r\n";
    disk.write("larkspin/larkmain.lpb", notes);
    IrcPerson bob = inDen("bob");
    const auto program = startIn("/connect plain 127.0.0.1 jo #den", hurry);
    program->tell("'scrn");
    for (int note = 1; note <= count; ++note) {
        ASSERT_NE(bob.hears("note " + std::to_string(note) + ' ', patience), "") << note;
        if (note == count / 2)
            program->tell("/now 'volume 7");
    }
    expectVolume(*program, "7");
}

} // namespace
} // namespace larkspin
