// Putting people out of a room on a network so that they stay out, and letting them in again.
#include "support/irc_machine.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace larkspin {
namespace {

class IrcModerationTest : public InMusic {
protected:
    // What is sent for it, without what is said.
    std::string sentFor(const std::string& command, std::chrono::seconds span = 10s) {
        sentOf([&] { room.say(command); }, span);
        std::string all;
        for (const std::string& line : server.sent)
            if (!line.starts_with("PRIVMSG"))
                all += line + '\n';
        return all;
    }
    std::string ejected() {
        std::string all;
        for (int row = 0; row < irc.ejected().count(); ++row)
            all += std::string(irc.ejected().row(row)) + ' ';
        return all;
    }
};

TEST(IrcModeration, ABanIsAboutWhatStaysWhenTheNameChanges) {
    const std::string home = ":ann!a@home JOIN #music\r\n", told = " :are supported\r\n";
    const std::string dollar = ":irc 005 Owner EXTBAN=$,ajrxz" + told;
    const std::string annie = ":ann!a@home JOIN #music annie :Ann\r\n";
    const struct {
        std::string told;
        const char* masks;
    } cases[] = {
        {home, "b *!*@home"},
        {":irc 353 Owner = #music :@ann!a@home", "b *!*@home"},
        {home + ":ann!a@home CHGHOST an a.cloak", "b *!*@a.cloak"},
        {home + ":ann!a@home QUIT :x\r\n:ann!e@other JOIN #music", "b *!*@other"},
        {home + ":bob!b@home JOIN #music", "b *!a@home"},
        {":ann!~a@host JOIN #music", "b *!~a@host"},      // where the owner is at home, too
        {home + ":bob!a@home JOIN #music", "b *!a@home"}, // the same person twice
        {":ann!o@host JOIN #music", "b ann!*@*"},
        {":ann!w@webchat.x JOIN #music\r\n:bob!w@webchat.x JOIN #music", "b ann!*@*"},
        {":ann!a@gateway/web/x JOIN #music", "b *!a@gateway/web/x"},
        {":ann!a@gateway/web/x JOIN #music\r\n:bob!b@gateway/web/x JOIN #music",
         "b *!a@gateway/web/x"},
        {":ann!a@1::b\\c*d JOIN #music", "b *!*@1::b?c?d"},
        {annie, "b *!*@home"},
        {dollar + annie, "bb $a:annie *!*@home"},
        {":irc 005 Owner EXTBAN=$,ar MODES=1" + told + annie,
         "b $a:annie\nMODE #music +b *!*@home"},
        {":irc 005 Owner EXTBAN=$,ar WHOX" + told + annie, "bb $a:annie *!*@home"},
        {":irc 005 Owner EXTBAN=a" + told + annie, "b *!*@home"},
        {dollar + ":ann!o@host JOIN #music annie :x", "b $a:annie"},
        {dollar + annie + ":ann!a@home ACCOUNT *", "b *!*@home"},
        {dollar + home + ":ann!a@home ACCOUNT annie", "bb $a:annie *!*@home"},
        {dollar + "@account=annie " + home, "bb $a:annie *!*@home"},
        {":irc 005 Owner EXTBAN=~,acf" + told + annie, "bb ~a:annie *!*@home"},
        {":irc 005 Owner EXTBAN=~,cf" + told + annie, "b *!*@home"},
        {":irc 005 Owner EXTBAN=,ACR" + told + annie, "bb R:annie *!*@home"},
        {":irc 005 Owner ACCOUNTEXTBAN=account,a EXTBAN=~,a" + told + annie,
         "bb ~account:annie *!*@home"},
    };
    for (const auto& [lines, masks] : cases) {
        IrcMachine machine;
        machine.server.capabilities += " account-notify";
        machine.begin();
        machine.told(lines);
        const std::string sent = machine.sentOf([&] { machine.room.say("'ban ann"); }, 3s);
        EXPECT_NE(sent.find("\nMODE #music +" + std::string(masks) + "\nKICK #music ann\n"),
                  sent.npos)
            << lines << sent;
        EXPECT_EQ(sent.find("WHO"), sent.npos) << lines;
        EXPECT_EQ(machine.irc.ejected().row(0), "ann") << lines;
    }
}

TEST_F(IrcModerationTest, AServerIsAskedWhereSomebodyComesFrom) {
    server.origins["ann"] = "a home";
    EXPECT_EQ(sentFor("'ban ann"), "WHO ann\nMODE #music +b *!*@home\nKICK #music ann\n");
    told(":irc 005 Owner EXTBAN=$,ar WHOX MODES= :are supported\r\n:eve!e@inn JOIN #music");
    std::string answer = ":irc 354 Owner 9 e inn eve no\r\n:irc 354 Owner 417 e inn eve evie";
    server.takes = [&](const std::string& line) {
        const bool asks = line.starts_with("WHO ");
        if (asks)
            server.say(answer);
        return asks;
    };
    EXPECT_EQ(sentFor("'ban eve"), "WHO eve %tuhna,417\nMODE #music +bb $a:evie *!*@inn\n"
                                   "KICK #music eve\n");
    told(":eve!e@inn JOIN #music");
    answer = ":irc 354 Owner 417 e inn eve 0";
    EXPECT_EQ(sentFor("'ban eve"), "WHO eve %tuhna,417\nMODE #music +b *!*@inn\nKICK #music eve\n");
}

TEST_F(IrcModerationTest, WithoutAnAnswerTheBanIsAboutWhatIsKnownThen) {
    server.takes = [](const std::string& line) { return line.starts_with("WHO "); };
    told(":irc 353 Owner = #music :c\\d*~f");
    std::size_t early = 0;
    loop.once(3900ms, [&] { early = server.sent.size(); });
    EXPECT_EQ(sentFor("'ban d*"), "WHO c\\d*~f\nMODE #music +b c?d??f!*@*\nKICK #music c\\d*~f\n");
    EXPECT_EQ(early, 2U); // the command itself, and the question

    const struct {
        const char *meanwhile, *sent;
    } cases[] = {
        {":bob NICK eve", "MODE #music +b eve!*@*\nKICK #music eve\n"},
        {":bob!b@inn NICK eve", "MODE #music +b *!*@inn\nKICK #music eve\n"},
        {":irc 263 Owner WHO :later", "MODE #music +b bob!*@*\nKICK #music bob\n"},
        {":ann NICK zed", "MODE #music +b bob!*@*\nKICK #music bob\n"},
        {":bob!b@inn QUIT :x", ""},
        {":x!x@y MODE #music -o Owner", ""},
        {":x!x@y KICK #music Owner", ""},
    };
    for (const auto& [meanwhile, sent] : cases) {
        seenOf([&] { irc.connect({.host = "irc.test"}, {.nick = "Owner"}, "#music"); });
        loop.once(1s, [&, line = meanwhile] { server.say(line); });
        EXPECT_EQ(sentFor("'ban bob"), std::string("WHO bob\n") + sent) << meanwhile;
    }
}

TEST_F(IrcModerationTest, APersonIsLetInByTheNameThatHeWasPutOutUnder) {
    told(":irc 005 Owner EXTBAN=$,ar :are supported\r\n:ann!a@home JOIN #music annie :x\r\n"
         ":bob!b@inn JOIN #music");
    sentFor("'ban ann");
    sentFor("'ban bob");
    told(":irc 367 Owner #music *!*@evil x 1\r\n:irc 367 Owner #music Ann!x@* x 1");
    EXPECT_EQ(ejected(), "ann bob *!*@evil ");
    seenOf([&] { server.lose("gone"); }, 6s); // who had which name isn't told by the server
    told(":irc 367 Owner #music $a:annie x 1\r\n:irc 367 Owner #music *!*@HOME x 1\r\n"
         ":irc 367 Owner #music *!*@evil x 1\r\n:irc 367 Owner #music Ann!x@* x 1");
    EXPECT_EQ(ejected(), "ann *!*@evil ");
    EXPECT_EQ(sentFor("'unban ann"), "MODE #music -bbb $a:annie *!*@home Ann!x@*\n");
    EXPECT_TRUE(seen.ends_with("Owner: <b>ann</b>, unbanned bastard\n")) << seen;
    told(":x!x@y MODE #music +b *!*@home"); // by somebody else
    EXPECT_EQ(ejected(), "*!*@evil *!*@home ");
    seenOf([&] { irc.connect({.host = "other.test"}, {.nick = "Owner"}, "#music"); });
    told(":irc 367 Owner #music *!*@inn x 1");
    EXPECT_EQ(ejected(), "*!*@inn ");
}

TEST_F(IrcModerationTest, ABanThatKeepsOutSeveralIsListedUnderAllTheirNames) {
    told(":ann!a@home JOIN #music\r\n:bob!a@home JOIN #music\r\n:carl!a@home JOIN #music");
    sentFor("'ban ann");
    server.takes = [](const std::string& line) { return line.find("+b") != line.npos; }; // it's set
    seenOf([&] { irc.roomPeople().eject({"bob", 0, irc.roomPeople().listPeople()[0].list}); });
    EXPECT_EQ(ejected(), "ann bob ");
    EXPECT_EQ(sentFor("'unban ann"), "MODE #music -b *!a@home\n");
    EXPECT_EQ(ejected(), "");
}

TEST_F(IrcModerationTest, ABanIsLiftedAlsoIfTheServerWritesItInAnotherWay) {
    told(":irc 005 Owner EXTBAN=,RS :are supported\r\n:ann!a@home JOIN #music keeper :x");
    server.takes = [&](const std::string& line) {
        const bool sets = line.find("+b") != line.npos;
        if (sets)
            server.say(":Owner!o@host MODE #music +bb account:keeper *!*@home");
        return sets;
    };
    sentFor("'ban ann");
    EXPECT_EQ(ejected(), "account:keeper ann ");
    EXPECT_EQ(sentFor("'unban ann"), "MODE #music -bb *!*@home R:keeper\n");
}

TEST_F(IrcModerationTest, AKickIsSentWithItsBanHoweverMuchWaits) {
    told(":ann!a@home JOIN #music");
    seenOf([&] { type(20); });
    loop.post([&] { irc.roomPeople().eject({"ann", 0, irc.roomPeople().listPeople()[0].list}); });
    server.sent.clear();
    while (std::ranges::find(server.sent, "MODE #music +b *!*@home") == server.sent.end())
        advance(10ms);
    EXPECT_EQ(server.sent.back(), "KICK #music ann");
}

TEST_F(IrcModerationTest, ARoomThatTheOwnerMakesForHimselfIsPrivate) {
    server.names["#den"] = server.names["#attic"] = server.names["#music"] = "@Owner";
    server.names["#hall"] = "@Owner ann";
    for (const auto& [command, mode] :
         {std::pair("'pr den", "MODE #den +si\n"), {"'pr #attic", "MODE #attic +si\n"}}) {
        const std::string sent = sentFor(command);
        EXPECT_NE(sent.find(mode), sent.npos) << sent;
    }
    EXPECT_EQ(sentFor("'pr empty"), "JOIN #empty\n"); // where he has no rank
    EXPECT_EQ(sentFor("'kw den"), "");                // which is no room's name
    EXPECT_EQ(sentFor("'kw #club").find("+si"), std::string::npos);
    EXPECT_EQ(sentFor("'pr hall").find("+si"), std::string::npos);
    const std::string again = sentOf([&] { server.lose("gone"); }, 20s);
    EXPECT_NE(again.find("MODE #attic +si\n"), again.npos) << again;
    EXPECT_EQ(again.find("MODE #music +si\n"), again.npos) << again;
}

} // namespace
} // namespace larkspin
