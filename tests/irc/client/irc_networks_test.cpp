// Several networks at once: what is for one of them alone, and what becomes of one that is
// forgotten.
#include "irc_words_fixture.h"

namespace larkspin {
namespace {

class IrcNetworksTest : public IrcWordsTest {};

TEST_F(IrcNetworksTest, SeveralNetworksAreWorkedAtOnceEachByItself) {
    server.names["#music"] = other.names["#music"] = "@jo ann";
    typed("/login jo"); // at home, for the next one
    toldOf("sesame");
    typed("/connect irc.test jo #music");
    EXPECT_EQ(typed("/connect as two other.test joe #music"),
              "two: connecting to other.test\ntwo: you are joe on other.test\n"
              "you are in #music on two\n");
    EXPECT_EQ(typed("/room"), "0  home\n1  #music on irc.test\n2  #music on two (here)\n");
    server.sent.clear();
    other.sent.clear();
    const auto say = [this](const char* line) {
        loop.post([this, line] { rooms->room.say(line); });
        loop.waitUntil(loop.now() + 10s);
        return shown->take();
    };
    EXPECT_EQ(say("hi"), "joe: hi\n");
    EXPECT_EQ(other.sent, Lines{"PRIVMSG #music hi"});
    EXPECT_EQ(server.sent, Lines{});
    server.say(":ann!a@h PRIVMSG #music :jo, hi\r\n:ann!a@h PRIVMSG #music :and so on");
    EXPECT_EQ(seenWithin(1s), "#music on irc.test: ann: jo, hi\n");
    EXPECT_EQ(typed("/room"),
              "0  home\n1  #music on irc.test (2 lines, 1 for you)\n2  #music on two (here)\n");
    EXPECT_EQ(typed("/room 1"), "you are in #music on irc.test\nann: jo, hi\nann: and so on\n");
    EXPECT_EQ(say("there"), "jo: there\n");
    EXPECT_EQ(server.sent, Lines{"PRIVMSG #music there"});
    server.sent.clear();
    for (const char* const line :
         {"/room 0", "/notice bob hi", "/room 1"}) // at home he means it, too
        typed(line);
    EXPECT_EQ(server.sent, Lines{"NOTICE bob hi"});
    EXPECT_EQ(typed("/networks"),
              "irc.test  irc.test:6697, as jo (on)\ntwo  other.test:6697, as joe (on)\n");
    EXPECT_EQ(typed("/disconnect two"), "two: you have left other.test\n");
    EXPECT_EQ(typed("/networks"),
              "irc.test  irc.test:6697, as jo (on)\ntwo  other.test:6697, as joe\n");
    EXPECT_EQ(typed("/connect two"),
              "two: connecting to other.test\ntwo: you are joe on other.test\n"
              "you are in #music on two\n");
    server.say(":ann!a@h PRIVMSG #music :hm");
    seenWithin(1s);
    EXPECT_NE(typed("/room").find("#music on irc.test (1 line)\n"), std::string::npos) << seen;
    server.lose("y"); // its host is its name
    EXPECT_EQ(seenWithin(1s), "irc.test: y; trying again in 5 seconds\n");
    seenWithin(30s);
    other.lose("x"); // while the other one stays
    EXPECT_EQ(seenWithin(1s), "other.test: x; trying again in 5 seconds\nyou are at home\n");
    EXPECT_EQ(seenWithin(30s), "you are joe on other.test\nyou are in #music on two\n");
    typed("/join #den");
    typed("/room 1");
    EXPECT_NE(typed("/connect").find("\nconnecting to irc.test\n"), std::string::npos) << seen;
    EXPECT_EQ(typed("/room #den"), "you are in #den on two\n");
    typed("/leave");
    begin();
    EXPECT_EQ(typed("/room"), "0  home\n1  #music on irc.test (here)\n2  #music on two\n");
    EXPECT_EQ(typed("/networks forget two"), "you are on two: /disconnect leaves it\n");
    typed("/disconnect two");
    EXPECT_EQ(typed("/networks forget two"), "two is forgotten\n");
    EXPECT_EQ(kept(), "server=irc.test\nport=6697\ntls=yes\nnick=jo\nroom=#music\nconnect=yes\n"
                      "login server=irc.test\nlogin=jo\n");
    EXPECT_EQ(typed("/networks forget two"), "two isn't known\n");
    EXPECT_EQ(typed("/room"), "0  home\n1  #music (here)\n");
}

TEST_F(IrcNetworksTest, ALoginWhoseServerIsDamagedInTheFileGoesToNoOther) {
    disk.write("irc.txt", "server=irc test\nnick=jo\nlogin server=irc.test\nlogin=jo\n"
                          "password=sesame\nnetwork=evil.test\nserver=evil.test\nport=6697\n"
                          "tls=yes\nnick=jo\nconnect=no\n");
    offerAccounts();
    begin();
    typed("/connect evil.test");
    EXPECT_EQ(server.to.host, "evil.test");
    EXPECT_EQ(logins, "");
}

TEST_F(IrcNetworksTest, TrustIsGivenToTheCertificateThatWasShownLast) {
    server.silent = other.silent = true;
    typed("/connect two.test jo");
    typed("/connect one.test jo");
    server.distrust(std::string(64, 'a'));
    seenWithin(1s);
    other.distrust(std::string(64, 'b'));
    seenWithin(1s);
    EXPECT_EQ(typed("/trust").substr(0, 32), "the certificate of one.test:6697");
    EXPECT_EQ(kept().find(std::string(64, 'a')), std::string::npos) << kept();
}

TEST_F(IrcNetworksTest, ANetworkIsForgottenInTheMiddleOfWhatIsSaidThere) {
    typed("/connect irc.test jo #music");
    int said = 0;
    loop.post([&] {
        for (; said < 10; ++said)
            rooms->room.sendChatLine("line");
    });
    loop.once(100ms, [&] {
        EXPECT_LT(said, 10);
        words.run("/disconnect");
        words.run("/networks forget irc.test");
    });
    loop.waitUntil(loop.now() + 60s);
    EXPECT_EQ(said, 10);
    EXPECT_EQ(typed("/networks"), "no network is known: /connect leads to one\n");
}

TEST_F(IrcNetworksTest, NobodyIsAskedForThePasswordOfOneThatIsForgotten) {
    for (const char* const line :
         {"/connect irc.test jo", "/login jo", "/disconnect", "/networks forget irc.test"})
        typed(line);
    EXPECT_FALSE(answered);
    EXPECT_EQ(seenWithin(1h), "");
}

TEST_F(IrcNetworksTest, OnlySoManyAreKnown) {
    for (int number = 1; number < 30; ++number)
        typed("/connect n" + std::to_string(number) + ".test jo");
    const std::string all = typed("/networks");
    EXPECT_EQ(typed("/connect more.test jo"),
              "larkspin knows no more networks: /networks forget NAME makes room\n");
    EXPECT_EQ(typed("/networks"), all);
}

TEST_F(IrcNetworksTest, StrangersPushOutNoTalkInWhichTheOwnerHasSpoken) {
    typed("/connect irc.test jo");
    server.say(":ann!a@h PRIVMSG jo :hi");
    typed("/query ann there");
    typed("/room 0");
    for (int each = 0; each < 120; ++each)
        server.say(":s" + std::to_string(each) + "!s@h PRIVMSG jo :hi");
    seenWithin(1s);
    typed("/room");
    EXPECT_NE(seen.find("ann"), std::string::npos) << seen;
    EXPECT_EQ(std::ranges::count(seen, '\n'), 101);
}

// The owner is in the middle of a line when he is put out of the room, or comes into one.
TEST_F(IrcNetworksTest, WhatIsTypedInOneConversationIsNeverSaidInAnother) {
    typed("/connect irc.test jo #music");
    typed("/join #den");
    const auto said = [this](const Conversations::Begun& begun, const char* line) {
        server.sent.clear();
        loop.post([this, &begun, line] {
            rooms->conversations.goBackTo(begun);
            rooms->room.say(line);
        });
        seenWithin(1s);
        return server.sent;
    };
    const auto inMusic = rooms->conversations.begun();
    server.say(":irc KICK #music jo :out");
    EXPECT_EQ(seenWithin(1s).ends_with("\nyou are at home\n"), true) << seen;
    EXPECT_EQ(said(inMusic, "for music"), Lines{});
    EXPECT_EQ(seen, "jo: for music\n");
    const auto atHome = rooms->conversations.begun();
    server.say(":jo!j@h JOIN #late");
    EXPECT_EQ(seenWithin(1s), "you are in #late\n");
    EXPECT_EQ(said(atHome, "to nobody"), Lines{});
    const auto before = rooms->conversations.begun();
    rooms->conversations.asOwnerWants([this] { typed("/room #late"); });
    EXPECT_EQ(said(before, "ahead"), Lines{"PRIVMSG #late ahead"});
    for (const char* const line : {"/connect two.test jo", "/connect two.test"}) {
        typed("/room #late");
        typed("/room 0");
        typed(line); // at home he means the one that he went to last
        other.sent.clear();
        typed("/notice bob hi");
        EXPECT_EQ(other.sent, Lines{"NOTICE bob hi"});
    }
}

// By whoever runs the server.
TEST_F(IrcNetworksTest, RoomsThatWereLeftAreKeptNoMoreThanAHundredOfThem) {
    typed("/connect irc.test jo");
    for (int each = 0; each < 120; ++each)
        server.say(":jo!j@h JOIN #r" + std::to_string(each) + "\r\n:irc KICK #r" +
                   std::to_string(each) + " jo :out");
    seenWithin(10s);
    typed("/room");
    EXPECT_LE(std::ranges::count(seen, '\n'), 102);
}

} // namespace
} // namespace larkspin
