// Rooms that are left, lost or come back to: on the next connection, and in the next run.
#include "irc/client/irc_words_fixture.h"

namespace larkspin {
namespace {

class IrcComingBackTest : public IrcWordsTest {};

TEST_F(IrcComingBackTest, EachLeaveIsForOneRoomHoweverSlowTheServerIs) {
    typed("/connect irc.test jo #a");
    for (const char* const room : {"/join #b", "/join #c"})
        typed(room);
    server.takes = [](const std::string& line) { return line.starts_with("PART"); };
    server.sent.clear();
    for (int times = 0; times < 4; ++times)
        typed("/leave");
    Lines left;
    for (const std::string& line : server.sent)
        left.push_back(line.substr(0, line.find(':')));
    EXPECT_EQ(left, (Lines{"PART #a ", "PART #c ", "PART #b "}));
    for (const char* const room : {"#a", "#c"}) { // and no more is answered before the end
        server.say(std::string(":jo!o@host PART ") + room);
        typed("/limit");
    }
    begin();
    EXPECT_EQ(typed("/room"), "0  home (here)\n");

    typed("/join #a");
    server.takes = [](const std::string& line) {
        return line.starts_with("PART") || line.starts_with("JOIN");
    };
    server.sent.clear();
    for (const char* const line : {"/join #d", "/leave", "/leave"})
        typed(line);
    server.say(":jo!o@host PART #a\r\n:jo!o@host JOIN #d");
    typed("/limit");
    EXPECT_EQ(server.sent.back(), "PART #d");
    EXPECT_EQ(typed("/room"), "0  home (here)\n");
}

TEST_F(IrcComingBackTest, WhatIsLeftStaysSoOnTheNextConnectionAndBeforeItIsJoined) {
    const auto holds = [this](const std::string& command) {
        server.takes = [command](const std::string& line) { return line.starts_with(command); };
    };
    typed("/connect irc.test jo #a");
    for (const char* const room : {"/join #b", "/join #c"})
        typed(room);
    holds("PART");
    typed("/leave");
    server.lose("x");
    loop.waitUntil(loop.now() + 10s);
    EXPECT_EQ(typed("/room"), "0  home\n1  #a (left)\n2  #b\n3  #c (here)\n");
    typed("/leave");
    typed("/join #c"); // again, before it has been left
    server.say(":jo!o@host PART #c");
    typed("/limit");
    EXPECT_EQ(typed("/room"), "0  home\n1  #a (left)\n2  #b (here)\n3  #c\n");

    server.lose("x");
    loop.waitUntil(loop.now() + 100ms);
    typed("/leave"); // #b, and that before the connection
    holds("JOIN");
    loop.waitUntil(loop.now() + 20s);
    EXPECT_EQ(server.sent.back(), "JOIN #c");
    typed("/leave");
    typed("/join #d");
    typed("/join #e");
    typed("/leave");
    server.sent.clear();
    for (const char* const room : {"#c", "#d", "#e"})
        server.say(std::string(":jo!o@host JOIN ") + room);
    typed("/limit");
    EXPECT_EQ(server.sent, (Lines{"PART #c", "PART #d"}));
    EXPECT_EQ(typed("/room"), "0  home\n1  #a (left)\n2  #b (left)\n3  #c (left)\n4  #e (here)\n");

    for (const char* const line : {"/leave", "/join #f", "/leave"})
        typed(line);
    server.lose("x");
    loop.waitUntil(loop.now() + 30s);
    server.say(":jo!o@host JOIN #f"); // by services, on a connection on which he left nothing
    typed("/limit");
    EXPECT_EQ(typed("/room"), "0  home\n1  #a (left)\n2  #b (left)\n3  #c (left)\n4  #f (here)\n");
}

TEST_F(IrcComingBackTest, WhereNothingCanBeSaidAnyMoreTheOwnerIsAtHomeWithIt) {
    typed("/connect irc.test jo #music");
    server.say(":irc KICK #music jo :out");
    seenWithin(1s);
    for (const bool acts : {true, false}) {
        typed("/room 1");
        EXPECT_EQ(typed("/again"), "nothing can be said here any more\n");
        shown->take();
        if (acts)
            words.run("/me sighs");
        else
            loop.post([this] { rooms->room.say("hm"); });
        EXPECT_EQ(seenWithin(1s),
                  acts ? "you are at home\n* jo sighs\n" : "you are at home\njo: hm\n");
    }
    EXPECT_EQ(typed("/again"), "/again is for a room or a talk on a network\n");
    rooms->words.quits();
    EXPECT_EQ(seenWithin(1s), "larkspin ends; /disconnect would only leave the network\n");
}

// He stays at home, or where he talked to somebody.
TEST_F(IrcComingBackTest, TheOwnerIsWhereHeWasWhenAConnectionIsMadeAgain) {
    server.names["#music"] = "@jo ann";
    typed("/connect irc.test jo #music");
    typed("/query ann");
    EXPECT_EQ(rooms->networks.atHand().client.people().count(), 0);
    server.say(":ann!a@h NICK Eve\r\n:Eve!a@h NICK eve\r\n:bob!b@h PRIVMSG jo :hi\r\n"
               ":bob!b@h NICK Eve");
    seenWithin(1s);
    for (const char* const there :
         {"0  home\n1  #music\n2  eve (here)\n3  bob (1 line, 1 for you)\n",
          "0  home (here)\n1  #music\n2  eve\n3  bob (1 line, 1 for you)\n"}) {
        server.lose("x");
        seenWithin(20s);
        EXPECT_EQ(typed("/room"), there);
        typed("/room 0");
    }
}

TEST_F(IrcComingBackTest, WhatWasAskedForIsTakenUpAgainUntilItIsLeft) {
    typed("/connect irc.test jo");
    typed("/join #music");
    server.say(":irc KICK #music jo :out");
    typed("/limit");
    EXPECT_EQ(typed("/room"), "0  home (here)\n1  #music (left)\n");
    begin();
    EXPECT_EQ(typed("/room"), "0  home\n1  #music (here)\n");
    typed("/join #den");
    typed("/leave"); // which he is put out of again
    server.say(":irc KICK #den jo :out");
    typed("/limit");
    begin();
    EXPECT_EQ(typed("/room"), "0  home\n1  #den (here)\n");
    server.say(":jo!o@host NICK Guest1"); // by services, which isn't his wish
    server.nick = "Guest1";
    typed("/leave");
    begin();
    EXPECT_EQ(typed("/room"), "0  home (here)\n");
    EXPECT_EQ(rooms->room.ownName(), "jo");
    rooms->room.errands().closeHost();
    begin();
    EXPECT_EQ(typed("/room"), "lobby, 1 person\n  jo\n");
}

} // namespace
} // namespace larkspin
