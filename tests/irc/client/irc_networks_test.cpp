// Several networks at once: what is for one of them alone, and what becomes of one that is
// forgotten.
#include "irc_words_fixture.h"

namespace larkspin {
namespace {

class IrcNetworksTest : public IrcWordsTest {};

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
    EXPECT_EQ(seenWithin(1s).ends_with("\nyou are in #den\n"), true) << seen;
    EXPECT_EQ(said(inMusic, "for music"), Lines{});
    EXPECT_EQ(seen, "you are at home\njo: for music\n");
    const auto atHome = rooms->conversations.begun();
    server.say(":jo!j@h JOIN #late");
    EXPECT_EQ(seenWithin(1s), "you are in #late\n");
    EXPECT_EQ(said(atHome, "to nobody"), Lines{});
    const auto before = rooms->conversations.begun();
    rooms->conversations.asOwnerWants([this] { typed("/room #late"); });
    EXPECT_EQ(said(before, "ahead"), Lines{"PRIVMSG #late ahead"});
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
