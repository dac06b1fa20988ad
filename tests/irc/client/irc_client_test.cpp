// A room on a network, worked as the owner works it: from a line of the wire to the command and
// back.
#include "support/irc_machine.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace larkspin {
namespace {

class IrcClientTest : public InMusic {
protected:
    // What is seen of each line: of a server's, which begins with its sender, or of the owner's.
    void expectTalk(std::initializer_list<std::pair<std::string, const char*>> talk) {
        for (const auto& [line, expected] : talk)
            EXPECT_EQ(line.starts_with(':') ? told(line) : typed(line, 10s), expected) << line;
    }
    Person listed(const std::string& name) {
        return {name, 0, irc.roomPeople().listPeople().front().list};
    }
    void connect(const char* host) {
        seenOf([&] { irc.connect({.host = host}, {.nick = "Owner"}, "#music"); });
    }
};

TEST_F(IrcClientTest, ACommandGoesToTheServerAndItsAnswerFollowsOnceItIsBack) {
    EXPECT_EQ(typed("'play ride"),
              "Owner: 'play ride\nOwner: playing:  <b>1</b>.  <b><u>ride</b></u>\n");
    EXPECT_EQ(server.sent, (Lines{"PRIVMSG #music :'play ride", "PRIVMSG #music :\x03"
                                                                "14'\u00AClks - \x03"
                                                                "10playing:  \x02"
                                                                "1\x02.  \x02\x1Fride\x0F "}));
    EXPECT_EQ(player.opened.size(), 1U);
}

TEST_F(IrcClientTest, WithoutEchoALineCountsAsItIsTypedAndAnAnswerAsItLeaves) {
    server.capabilities = "";
    connect("irc.test");
    EXPECT_EQ(typed("'volume 7"), "Owner: 'volume 7\nOwner: volume set:  <b>7</b>\n");
    EXPECT_EQ(state().HScroll2, 7);
}

TEST_F(IrcClientTest, WhatIsOnTheScreenAlreadyIsNotShownAgain) {
    EXPECT_EQ(seenOf([&] { room.say("'volume 7", true); }), "Owner: volume set:  <b>7</b>\n");
    EXPECT_EQ(state().HScroll2, 7);
}

TEST_F(IrcClientTest, MarkupTravelsAsCodesAndALongLineInPieces) {
    EXPECT_EQ(sentOf([&] { room.say("<b>loud</b>"); }).substr(0, 18), "PRIVMSG #music \x02lo");
    const std::string longLine = "volume " + std::string(900, '7');
    EXPECT_EQ(typed(longLine, 20s), "Owner: " + longLine + '\n');
    EXPECT_EQ(server.sent.size(), 5U);
}

TEST_F(IrcClientTest, NothingThatOthersSaySteersADisplay) {
    const auto said = [&](const std::string& text) {
        return told(":ann!a@h PRIVMSG #music :" + text);
    };
    EXPECT_EQ(said("\x02hi <b>\x1b[2J\x81"), "ann: <b>hi <\u200Cb>\uFFFD[2J\uFFFD\n");
    for (const char* const steers :
         {"\u061C", "\u200E", "\u200F", "\u2028", "\u202E", "\u2066", "\u2069"})
        EXPECT_EQ(said(steers), "ann: \uFFFD\n") << steers;
    const std::string neighbours = "\u061B\u200D\u2010\u2027\u202F\u2065\u206A";
    EXPECT_EQ(said(neighbours), "ann: " + neighbours + '\n');
}

TEST_F(IrcClientTest, OthersComeGoAndAreIgnoredUnderAllTheirNames) {
    const std::string says = ":eve!a@h PRIVMSG #music :hi";
    expectTalk({
        {":eve!e@h JOIN #music\r\n:eve!e@h NICK Evi\r\n:evi!e@h QUIT :x",
         "- eve comes in\n- eve is now called Evi\n- evi goes: x\n"},
        {":zoe!z@h NICK zo\r\n:zo!z@h QUIT :x\r\n:zo!z@h JOIN #den\r\n:zo!z@h PART #den", ""},
        {"'x ANN", "Owner: 'x ANN\n- ann is ignored\nOwner: <b>ann</b>, ignored bastard\n"},
        {":ann!a@h NICK eve", "- ann is now called eve\n"},
        {says + "\r\n:eve!a@h PRIVMSG Owner :hi\r\n:eve!a@h INVITE Owner #den", ""},
        {":bob!b@h INVITE Owner #den", "- bob invites you to #den: /join #den leads there\n"},
        {":bob!b@h MODE #music +v-v eve eve", "- bob sets +v-v eve eve\n"},
        {":zoe!z@h JOIN #music\r\n:bob!b@h KICK #music zoe :x",
         "- zoe comes in\n- zoe is put out by bob: x\n"},
        {":zoe!z@h JOIN #music\r\n:bob!b@h KICK #music zoe :bob",
         "- zoe comes in\n- zoe is put out by bob\n"},
        {":zoe!z@h JOIN #music\r\n:zoe!z@h PART #music :\x02to bed",
         "- zoe comes in\n- zoe goes: to bed\n"},
        {":irc KILL Owner :flood", "- irc ends your connection: flood\n"},
        {"'unx eve",
         "Owner: 'unx eve\n- eve is heard again\nOwner: <b>eve</b>, unignored bastard\n"},
        {says, "eve: hi\n"},
    });
    irc.roomPeople().toggleIgnored(listed("eve"));
    connect("irc.test");
    EXPECT_EQ(told(says), "");
    connect("other.test"); // where that is somebody else's name
    EXPECT_EQ(told(says), "eve: hi\n");
}

TEST_F(IrcClientTest, WhatServersTellBesidesDoesNoHarm) {
    expectTalk({
        {":eve!e@h JOIN #music account :Eve", "- eve comes in\n"},
        {":irc BATCH +1 netsplit a b\r\n@batch=1 :eve!e@h QUIT :a b\r\n:irc BATCH -1",
         "- eve goes: a and b have lost each other\n"},
        {":irc BATCH +1 netjoin a b\r\n@batch=1 :eve!e@h JOIN #music\r\n:irc BATCH -1",
         "- eve comes back: a and b have found each other\n"},
        {":ann!a@h ACCOUNT Owner\r\n:ann!a@h CHGHOST o host\r\n@x=1 :ann!a@h TAGMSG #music\r\n"
         ":ann!a@h AWAY :out\r\n@label=1 :irc ACK\r\n:Owner!o@host CHGHOST o other",
         ""},
        {":ann!a@h INVITE zoe #den", "- ann invites zoe to #den\n"},
        {":irc FAIL JOIN CLOSED #den nobody :Not now", "- JOIN #den nobody: Not now\n"},
        {":irc WARN * LATE a b :It is late", "- warning: a b: It is late\n"},
        {":irc NOTE\r\n:irc NOTE x", "- note: \n- note: x\n"},
    });
    EXPECT_EQ(typed("'volume 7"), "Owner: 'volume 7\nOwner: volume set:  <b>7</b>\n");
}

TEST_F(IrcClientTest, AnOperatorPutsOthersOutAndLetsThemBackIn) {
    EXPECT_EQ(
        sentOf([&] { room.say("'ban ann"); }, 10s).substr(0, 79),
        "PRIVMSG #music :'ban ann\nWHO ann\nMODE #music +b ann!*@*\nKICK #music ann\nPRIVMSG");
    EXPECT_EQ(irc.people().count(), 2);
    told(":irc 367 Owner #music *!*@evil bob 1\r\n:bob!b@h MODE #music +b Ann!x@*");
    EXPECT_EQ(sentOf([&] { room.say("'unban ann"); }, 20s).substr(0, 26),
              "PRIVMSG #music :'unban ann");
    EXPECT_EQ(irc.ejected().count(), 1);
    for (const char* other : {"OWNER", "nobody"})
        EXPECT_EQ(sentOf([&] { irc.roomPeople().eject(listed(other)); }), "") << other;
    told(":bob!b@h MODE #music -o Owner");
    EXPECT_EQ(typed("'ban bob"), "Owner: 'ban bob\nOwner: you aren't the owner, dumbass\n");
}

TEST_F(IrcClientTest, WhoWasListedInOneRoomIsNobodyInTheNext) {
    server.names["#den"] = "@Owner ann";
    const Person ann = listed("ann"), evil = listed("*!*@evil");
    seenOf([&] { room.errands().enterPrivateRoom("den"); });
    told(":irc 367 Owner #den *!*@evil");
    EXPECT_EQ(sentOf([&] {
                  irc.roomPeople().eject(ann);
                  irc.roomPeople().toggleIgnored(ann);
                  irc.roomPeople().allow(evil);
              }),
              "");
    EXPECT_FALSE(room.isIgnored("ann"));
}

TEST_F(IrcClientTest, NobodyIsSaidToBePutOutOfARoomThatTheOwnerHasLeft) {
    for (const char* const name : {"ann", "bob"})
        own.comeIn(name);
    own.enterRoom(own.name()); // both count alike
    irc.enterRoom("#music");
    advance(60s);
    loop.once(400ms, [&] { irc.disconnect(); });
    const std::string told = typed("'ban ", 20s);
    EXPECT_NE(told.find("<b>ann</b>, ejected bastard"), told.npos) << told;
    EXPECT_EQ(told.find("<b>bob</b>"), told.npos) << told;
    EXPECT_EQ(own.people().count(), 3);
    loop.once(400ms, [&] { irc.connect({.host = "irc.test"}, {.nick = "Owner"}, "#music"); });
    typed("'ban ", 20s);
    EXPECT_EQ(own.people().count(), 1); // they were to go from there
}

TEST_F(IrcClientTest, BansAreAskedForAsSoonAsTheOwnerCouldLiftThem) {
    server.names["#music"] = "Owner ann";
    connect("irc.test");
    const auto asked = [&](const char* mode) { return sentOf([&] { server.say(mode); }); };
    EXPECT_EQ(asked(":ann!a@h MODE #music +v Owner"), "");
    EXPECT_EQ(asked(":ann!a@h MODE #music +o Owner"), "MODE #music b\n");
    EXPECT_EQ(asked(":ann!a@h MODE #music -o+o Owner Owner"), "");
}

TEST_F(IrcClientTest, OneOfSeveralRoomsIsTheRoom) {
    EXPECT_EQ(joined("den"), "- #den is room 2\n");
    EXPECT_EQ(told(":ann!a@h PRIVMSG #den :hi\r\n:ann!a@h PRIVMSG #DEN :hi\r\n"
                   ":bob!b@h KICK #den zoe :x"),
              "");
    EXPECT_EQ(conversations.numbered(2)->unread(), 2);
    EXPECT_EQ(seenOf([&] { irc.enterRoom("den"); }), "- you are in #den\nann: hi\nann: hi\n"
                                                     "- zoe is put out by bob: x\n");
    EXPECT_EQ(room.name(), "#den");
    expectTalk({
        {"'pr #attic", "Owner: 'pr #attic\nOwner: private room ~> <b>#attic\n"
                       "- you are in #attic\n"},
        {":bob!b@h KICK #attic Owner :out",
         "- bob puts you out of #attic: out\n- you have left #attic\n- you are at home\n"},
    });
    irc.enterRoom("#music");
    EXPECT_EQ(conversations.numbered(2)->unread(), 0);
    told(":Owner!o@host JOIN #Music\r\n:irc 353 Owner = #Music :Owner"); // once more
    EXPECT_EQ(room.name(), "#Music");
    EXPECT_EQ(irc.people().count(), 1);
    for (const std::string& name : {std::string("a b"), std::string("a,b"), std::string(200, 'x')})
        EXPECT_EQ(joined(name), "- a room's name is short and has no blanks or commas\n");
}

TEST_F(IrcClientTest, RoomsAreNoMoreThanAHundred) {
    std::string forced;
    for (int number = 2; number <= 101; ++number)
        forced += ":Owner!o@host JOIN #room" + std::to_string(number) + "\r\n";
    EXPECT_EQ(sentOf([&] { server.say(forced); }), "PART #room101\n");
    EXPECT_TRUE(seen.ends_with("- #room100 is room 100\n- there are too many rooms\n")) << seen;
    EXPECT_TRUE(conversations.numbered(100));
    EXPECT_FALSE(conversations.numbered(101));
    EXPECT_EQ(joined("#x"), "- there are too many rooms\n");
    const std::string left = sentOf([&] { irc.finish(); }); // in lines that a server takes
    EXPECT_EQ(std::ranges::count(left, '#'), 100);
    EXPECT_NE(left.find("#room100 :larkspin"), left.npos) << left;
}

// Each of these is for the owner alone to see.
TEST_F(IrcClientTest, PrivateMessagesRequestsAndNoticesAreTold) {
    const std::string whispers = ":ann!a@h PRIVMSG Owner :\x02hi\x1b[2J";
    expectTalk({
        {whispers, "- ann whispers: hi\uFFFD[2J\n"},
        {":ann!a@h NOTICE #music :hi", "- ann notes: hi\n"},
        {":NickServ!s@h NOTICE Owner :who are you", "- NickServ notes: who are you\n"},
        {":irc NOTICE * :soon down", "- irc notes: soon down\n"},
        {":ann!a@h PRIVMSG #music :\x01"
         "ACTION waves\x01",
         "- * ann waves\n"},
        {":ann!a@h PRIVMSG Owner :\x01VERSION\x01", "- ann's program asks for VERSION\n"},
        {":ann!a@h PRIVMSG #elsewhere :hi", ""},
        {":ann!a@h PRIVMSG @#music :\x02hi", "- ann to @#music: hi\n"},
        {":Owner!o@host PRIVMSG @#music :'volume 7", ""},
        {":ann!a@h PRIVMSG @#music :\x01VERSION\x01", ""},
        {":ann!a@h PRIVMSG !#music :hi", ""},
        {":irc 404 Owner #music :Cannot send to channel", "- #music: Cannot send to channel\n"},
        {":irc 372 Owner :- our rules", ""},
        {":irc ERROR :Closing link", "- irc.test: Closing link\n"},
        {":ann!a@h TOPIC #music :rock", "- ann sets the topic: rock\n"},
        {"'imsoff", "Owner: 'imsoff\nOwner: ims are now off\n"},
        {whispers, "- a private message of ann was refused\n"},
        {":irc NOTICE * :soon down", "- irc notes: soon down\n"},
        {":*status!z@h PRIVMSG Owner :hi", "- *status whispers: hi\n"},
        {":ChanServ!c@h PRIVMSG Owner :hi", "- ChanServ whispers: hi\n"},
        {":q!q@CServe.q.net PRIVMSG Owner :hi", "- q whispers: hi\n"},
        {":s!s@service.x PRIVMSG Owner :hi", "- s whispers: hi\n"},
        {":Someone!s@services.net PRIVMSG Owner :code 1", "- Someone whispers: code 1\n"},
        {":irc.test PRIVMSG Owner :soon down", "- irc.test whispers: soon down\n"},
        {"'imson", "Owner: 'imson\nOwner: ims are now on\n"},
        {whispers, "- ann whispers: hi\uFFFD[2J\n"},
    });
}

// A front end keeps room for these which no flood from others can take.
TEST_F(IrcClientTest, WhatTheOwnerHasAskedForIsToldApart) {
    answers = 0;
    seenOf([&] { irc.names(); });
    EXPECT_EQ(answers, 4);
    told(":irc.test 401 Owner nobody :No such nick");
    EXPECT_EQ(answers, 5);
    told(":eve!e@h JOIN #music\r\n:ann!a@h TOPIC #music :x\r\n:ann!a@h PRIVMSG Owner :x\r\n"
         ":ann!a@h INVITE Owner #den\r\n:ann!a@h MODE #music +v eve\r\n:eve!e@h QUIT :x");
    EXPECT_EQ(answers, 5);
}

TEST_F(IrcClientTest, TheClientsErrandsAreRunOnTheNetwork) {
    advance(125s);
    expectTalk({{"'ot", "Owner: 'ot\nOwner: online for <b>2</b> minutes.\n"}});
    for (int minute = 0; minute < 60; ++minute)
        seenOf([&] { server.say("PING :x"); }, 1min);
    expectTalk({{"'ot", "Owner: 'ot\nOwner: online for <b>1</b> hour and <b>2</b> minutes.\n"},
                {"'signoff", "Owner: 'signoff\nOwner: signing off this piece of shit!\n"
                             "- you are at home\n- you are signed off\n"}});
    EXPECT_EQ(server.sent.back().substr(0, 4), "QUIT");
    EXPECT_EQ(typed("'volume 7", 1h), "Login: 'volume 7\nLogin: volume set:  <b>7</b>\n");
    EXPECT_EQ(server.opened, 1);
    EXPECT_EQ(joined("#den"), "- you are not connected\n");
    seenOf([&] { irc.disconnect(); });
    EXPECT_EQ(room.currentScreenName(), "Login");
    EXPECT_EQ(seenOf([&] {
                  irc.disconnect();
                  irc.signOff();
              }),
              "");
}

TEST_F(IrcClientTest, WithoutAConnectionTheOwnerIsObeyedAtHomeAndToldOnceHowToStopTheTries) {
    const std::string stop = "- larkspin still tries to get to irc.test, which /disconnect stops\n";
    const std::string set = "Login: 'volume 7\nLogin: volume set:  <b>7</b>\n";
    server.silent = true;
    connect("irc.test");
    for (const bool isFirst : {true, false})
        EXPECT_EQ(typed("'volume 7", 10s), (isFirst ? stop : "") + set);
    server.silent = false;
    connect("irc.test");
    for (int loss = 0; loss < 2; ++loss) {
        server.refuses = true;
        EXPECT_EQ(seenOf([&] { server.lose("x"); }),
                  "- irc.test: x; trying again in 5 seconds\n- you are at home\n");
        server.sent.clear();
        EXPECT_EQ(typed("'volume 7"), stop + set);
        EXPECT_EQ(server.sent, Lines());
        server.refuses = false;
        EXPECT_EQ(seenOf([] {}, 2min), "- you are Owner on irc.test\n- you are in #music\n");
    }
    EXPECT_EQ(told(":bob!b@h KICK #music Owner :x"),
              "- bob puts you out of #music: x\n- you have left #music\n- you are at home\n");
    EXPECT_EQ(typed("'volume 7"), set);
}

TEST_F(IrcClientTest, AWindowIsToldOfEachChange) {
    joined("#den");
    const std::pair<const char*, std::function<void()>> ways[] = {
        {"ignores", [&] { irc.roomPeople().toggleIgnored(listed("ann")); }},
        {"enters", [&] { irc.enterRoom("#den"); }},
        {"hears", [&] { server.say(":ann!a@h JOIN #den"); }},
        {"is lost", [&] { server.lose("x"); }},
        {"connects",
         [&] {
             server.silent = true;
             irc.connect({.host = "irc.test"}, {.nick = "Owner"}, "");
         }},
        {"signs off", [&] { irc.signOff(); }},
        {"goes home", [&] { irc.disconnect(); }},
    };
    for (const auto& [how, go] : ways) {
        changes = 0;
        seenOf(go);
        EXPECT_GT(changes, 0) << how;
    }
}

TEST_F(IrcClientTest, ClosingTheClientLeadsBackToTheOwnRoom) {
    expectTalk({{"'closeaol", "Owner: 'closeaol\nOwner: closing this piece of shit!\n"
                              "- you are at home\n- you have left irc.test\n"},
                {"'volume 7", "Login: 'volume 7\nLogin: volume set:  <b>7</b>\n"}});
    EXPECT_EQ(room.name(), "lobby");
}

TEST_F(IrcClientTest, AsTheProcessEndsTheRoomsAreLeftWithAWord) {
    seenOf([&] { type(9); });
    EXPECT_EQ(sentOf([&] {
                  loop.post([&] {
                      irc.sendChatLine("bye");
                      irc.finish();
                  });
              }),
              "PRIVMSG #music bye\nPART #music :larkspin flies off\nQUIT :larkspin flies off\n");
    EXPECT_EQ(server.finishing, 300ms);
}

} // namespace
} // namespace larkspin
