// A room on a network, worked as the owner works it: from a line of the wire to the command and
// back.
#include "support/irc_machine.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

TEST(IrcClient, ACommandGoesToTheServerAndItsAnswerFollowsOnceItIsBack) {
    IrcMachine machine;
    machine.begin();
    EXPECT_EQ(machine.typed("'play ride"),
              "Owner: 'play ride\nOwner: playing:  <b>1</b>.  <b><u>ride</b></u>\n");
    EXPECT_EQ(machine.server.sent.front(), "PRIVMSG #music :'play ride");
    EXPECT_EQ(machine.server.sent.size(), 2U);
    EXPECT_EQ(machine.player.opened.size(), 1U);
}

TEST(IrcClient, WithoutEchoALineCountsAsItIsTypedAndAnAnswerAsItLeaves) {
    IrcMachine machine;
    machine.server.capabilities = "";
    machine.begin();
    EXPECT_EQ(machine.typed("'volume 7"), "Owner: 'volume 7\nOwner: volume set:  <b>7</b>\n");
    EXPECT_EQ(machine.state().HScroll2, 7);
}

TEST(IrcClient, WhatIsOnTheScreenAlreadyIsNotShownAgain) {
    IrcMachine machine;
    machine.begin();
    EXPECT_EQ(machine.seenOf([&] { machine.room.sayShown("'volume 7"); }),
              "Owner: volume set:  <b>7</b>\n");
    EXPECT_EQ(machine.state().HScroll2, 7);
}

TEST(IrcClient, MarkupTravelsAsCodesAndALongLineInPieces) {
    IrcMachine machine;
    machine.begin();
    EXPECT_EQ(machine.sentOf([&] { machine.room.say("<b>loud</b>"); }).substr(0, 18),
              "PRIVMSG #music \x02lo");
    EXPECT_EQ(machine.told(":ann!a@h PRIVMSG #music :\x02hi <b>\x1b[2J"),
              "ann: <b>hi <\u200Cb>\uFFFD[2J\n");
    const std::string longLine = "volume " + std::string(900, '7');
    EXPECT_EQ(machine.typed(longLine, 10s), "Owner: " + longLine + '\n');
    EXPECT_EQ(machine.server.sent.size(), 5U);
}

TEST(IrcClient, OthersComeGoAndAreIgnoredUnderAllTheirNames) {
    IrcMachine machine;
    machine.begin();
    EXPECT_EQ(machine.told(":eve!e@h JOIN #music\r\n:eve!e@h NICK Evi\r\n:evi!e@h QUIT :x"),
              "- eve comes in\n- eve is now called Evi\n- evi goes\n");
    EXPECT_EQ(machine.typed("'x ANN", 1s),
              "Owner: 'x ANN\n- ann is ignored\nOwner: <b>ann</b>, ignored bastard\n");
    EXPECT_EQ(machine.told(":ann!a@h NICK eve\r\n:eve!a@h PRIVMSG #music :hi\r\n"
                           ":eve!a@h PRIVMSG Owner :hi\r\n:eve!a@h INVITE Owner #den"),
              "- ann is now called eve\n");
    EXPECT_EQ(machine.typed("'unx eve", 1s),
              "Owner: 'unx eve\n- eve is heard again\nOwner: <b>eve</b>, unignored bastard\n");
    EXPECT_EQ(machine.told(":eve!a@h PRIVMSG #music :hi"), "eve: hi\n");
}

TEST(IrcClient, AnOperatorPutsOthersOutAndLetsThemBackIn) {
    IrcMachine machine;
    machine.begin();
    EXPECT_EQ(machine.sentOf([&] { machine.room.say("'ban ann"); }, 10s).substr(0, 71),
              "PRIVMSG #music :'ban ann\nMODE #music +b ann!*@*\nKICK #music ann\nPRIVMSG");
    EXPECT_EQ(machine.irc.people().count(), 2);
    machine.told(":irc 367 Owner #music *!*@evil bob 1\r\n:bob!b@h MODE #music +b Ann!x@*");
    EXPECT_EQ(machine.sentOf([&] { machine.room.say("'unban ann"); }, 20s).substr(0, 26),
              "PRIVMSG #music :'unban ann");
    EXPECT_EQ(machine.irc.ejected().count(), 1);
    machine.told(":bob!b@h MODE #music -o Owner");
    EXPECT_EQ(machine.typed("'ban bob"), "Owner: 'ban bob\nOwner: you aren't the owner, dumbass\n");
}

TEST(IrcClient, BansAreAskedForAsSoonAsTheOwnerCouldLiftThem) {
    IrcMachine machine;
    machine.server.names["#music"] = "Owner ann";
    machine.begin();
    const auto asked = [&](const char* mode) {
        return machine.sentOf([&] { machine.server.say(mode); });
    };
    EXPECT_EQ(asked(":ann!a@h MODE #music +v Owner"), "");
    EXPECT_EQ(asked(":ann!a@h MODE #music +o Owner"), "MODE #music b\n");
    EXPECT_EQ(asked(":ann!a@h MODE #music -o+o Owner Owner"), "");
}

TEST(IrcClient, OneOfSeveralRoomsIsTheRoom) {
    IrcMachine machine;
    machine.begin();
    EXPECT_EQ(machine.seenOf([&] { machine.irc.join("den"); }), "- #den is room 2\n");
    EXPECT_EQ(machine.told(":ann!a@h PRIVMSG #den :hi\r\n:ann!a@h PRIVMSG #DEN :hi"), "");
    EXPECT_EQ(machine.irc.rooms()[1].unseen, 2);
    EXPECT_EQ(machine.seenOf([&] { machine.irc.enterRoom(2); }), "- you are in #den\n");
    EXPECT_EQ(machine.room.name(), "#den");
    EXPECT_EQ(machine.typed("'pr #attic", 10s),
              "Owner: 'pr #attic\nOwner: private room ~> <b>#attic\n- you are in #attic\n");
    EXPECT_EQ(machine.seenOf([&] { machine.irc.leave(); }, 10s),
              "- you have left #attic\n- you are in #den\n");
    EXPECT_EQ(machine.told(":bob!b@h KICK #den Owner :out"),
              "- bob puts you out of #den: out\n- you have left #den\n- you are in #music\n");
    EXPECT_EQ(machine.seenOf([&] { machine.irc.enterRoom(2); }), "- there is no room 2\n");
    EXPECT_EQ(machine.seenOf([&] { machine.irc.join("a b,c"); }),
              "- a room's name is short and has no blanks or commas\n");
}

TEST(IrcClient, RoomsAreNoMoreThanAHundred) {
    IrcMachine machine;
    machine.begin();
    std::string forced;
    for (int room = 2; room <= 101; ++room)
        forced += ":Owner!o@host JOIN #" + std::to_string(room) + "\r\n";
    EXPECT_EQ(machine.sentOf([&] { machine.server.say(forced); }), "PART #101\n");
    EXPECT_EQ(machine.irc.rooms().size(), 100U);
    EXPECT_EQ(machine.seenOf([&] { machine.irc.join("#x"); }), "- there are too many rooms\n");
}

// Each of these is for the owner alone to see.
TEST(IrcClient, PrivateMessagesRequestsAndNoticesAreTold) {
    IrcMachine machine;
    machine.begin();
    const struct {
        const char *line, *seen;
    } cases[] = {
        {":ann!a@h PRIVMSG Owner :\x02hi\x1b[2J", "- ann whispers: hi\uFFFD[2J\n"},
        {":ann!a@h NOTICE #music :hi", "- ann notes: hi\n"},
        {":NickServ!s@h NOTICE Owner :who are you", "- NickServ notes: who are you\n"},
        {":irc NOTICE * :soon down", "- irc notes: soon down\n"},
        {":ann!a@h PRIVMSG #music :\x01"
         "ACTION waves\x01",
         "- * ann waves\n"},
        {":ann!a@h PRIVMSG Owner :\x01VERSION\x01", ""},
        {":ann!a@h PRIVMSG #elsewhere :hi", ""},
        {":ann!a@h PRIVMSG @#music :\x02hi", "- ann to @#music: hi\n"},
        {":Owner!o@host PRIVMSG @#music :'volume 7", ""},
        {":ann!a@h PRIVMSG !#music :hi", ""},
        {":irc 404 Owner #music :Cannot send to channel", "- #music: Cannot send to channel\n"},
        {":irc 372 Owner :- our rules", ""},
        {"ERROR :Closing link", "- irc.test: Closing link\n"},
        {":ann!a@h TOPIC #music :rock", "- ann sets the topic: rock\n"},
    };
    for (const auto& each : cases)
        EXPECT_EQ(machine.told(each.line), each.seen);
    machine.typed("'imsoff");
    EXPECT_EQ(machine.told(cases[0].line), "- a private message of ann was refused\n");
    machine.typed("'imson");
    EXPECT_EQ(machine.told(cases[0].line), cases[0].seen);
}

TEST(IrcClient, TheOwnersWordsDoWhatTheySay) {
    IrcMachine machine;
    machine.begin();
    EXPECT_EQ(machine.seenOf([&] { machine.irc.names(); }),
              "- #music, 3 people\n-   @Owner\n-   ann\n-   +bob\n");
    EXPECT_EQ(machine.seenOf([&] { machine.irc.topic(std::nullopt); }), "- there is no topic\n");
    EXPECT_EQ(machine.sentOf([&] { machine.irc.topic("rock"); }), "TOPIC #music rock\n");
    EXPECT_EQ(machine.seenOf([&] { machine.irc.topic({}); }), "- the topic is: rock\n");
    EXPECT_EQ(machine.seenOf([&] { machine.irc.message("ann", "<b>psst"); }), "- to ann: psst\n");
    EXPECT_EQ(machine.seenOf([&] { machine.irc.message("#x", "psst"); }), "- you are not in #x\n");
    EXPECT_EQ(machine.seenOf([&] { machine.irc.changeNick("Boss"); }),
              "- you are now called Boss\n");
    EXPECT_EQ(machine.room.currentScreenName(), "Boss");
}

// A front end keeps them a place that no flood of others takes.
TEST(IrcClient, WhatTheOwnerHasAskedForIsToldApart) {
    IrcMachine machine;
    machine.begin();
    machine.answers = 0;
    machine.seenOf([&] { machine.irc.names(); });
    EXPECT_EQ(machine.answers, 4);
    machine.told(":irc.test 401 Owner nobody :No such nick");
    EXPECT_EQ(machine.answers, 5);
    machine.told(":eve!e@h JOIN #music\r\n:ann!a@h TOPIC #music :x\r\n:ann!a@h PRIVMSG Owner :x\r\n"
                 ":ann!a@h INVITE Owner #den\r\n:ann!a@h MODE #music +v eve\r\n:eve!e@h QUIT :x");
    EXPECT_EQ(machine.answers, 5);
}

TEST(IrcClient, TheClientsErrandsAreRunOnTheNetwork) {
    IrcMachine machine;
    machine.begin();
    machine.advance(125s);
    EXPECT_EQ(machine.typed("'ot", 1s), "Owner: 'ot\nOwner: online for <b>2</b> minutes.\n");
    EXPECT_EQ(machine.typed("'signoff", 1s),
              "Owner: 'signoff\nOwner: signing off this piece of shit!\n- you are signed off\n");
    EXPECT_EQ(machine.server.sent.back().substr(0, 4), "QUIT");
    EXPECT_EQ(machine.typed("'volume 7", 1h), "- you are not connected\n");
    EXPECT_EQ(machine.server.opened, 1);
    machine.seenOf([&] { machine.irc.disconnect(); });
    EXPECT_EQ(machine.room.currentScreenName(), "Login");
}

TEST(IrcClient, ClosingTheClientLeadsBackToTheOwnRoom) {
    IrcMachine machine;
    machine.begin();
    EXPECT_EQ(machine.typed("'closeaol", 1s),
              "Owner: 'closeaol\nOwner: closing this piece of shit!\n- you have left irc.test\n");
    EXPECT_EQ(machine.room.name(), "lobby");
    EXPECT_EQ(machine.typed("'volume 7"), "Login: 'volume 7\nLogin: volume set:  <b>7</b>\n");
}

TEST(IrcClient, AsTheProcessEndsTheRoomsAreLeftWithAWord) {
    IrcMachine machine;
    machine.begin();
    EXPECT_EQ(machine.sentOf([&] { machine.irc.finish(); }),
              "PART #music :larkspin flies off\nQUIT :larkspin flies off\n");
    EXPECT_EQ(machine.server.finishing, 300ms);
}

} // namespace
} // namespace larkspin
