// What the owner says by words with a slash, and what of it is never shown again.
#include "irc/client/irc_words_fixture.h"

namespace larkspin {
namespace {

class IrcTalkWordsTest : public IrcWordsTest {
protected:
    std::string sentBy(const std::string& line) {
        server.sent.clear();
        typed(line);
        std::string all;
        for (const std::string& each : server.sent)
            all += each + '\n';
        return all;
    }
};

TEST_F(IrcTalkWordsTest, AnActionOrANoticeIsShownOnceAndIsNoCommand) {
    EXPECT_EQ(typed("/me  waves"), "* jo waves\n");
    EXPECT_EQ(typed("/notice ann hi"), "you are not connected\n");
    lines.connect([this](const ChatLine& line) { heard.push_back(line.text); });
    for (const char* const capabilities : {"echo-message", ""}) {
        server.capabilities = capabilities;
        typed("/connect irc.test jo #music");
        const std::pair<const char*, std::pair<const char*, const char*>> steps[] = {
            {"/me 'volume 7",
             {"* jo 'volume 7\n", "PRIVMSG #music :\x01"
                                  "ACTION 'volume 7\x01\n"}},
            {"/notice #music hi all", {"jo notes: hi all\n", "NOTICE #music :hi all\n"}},
            {"/notice ann hi", {"notice to ann: hi\n", "NOTICE ann hi\n"}},
            {"/msg #MUSIC hi", {"jo: hi\n", "PRIVMSG #music hi\n"}},
            {"/query ann", {"you talk to ann\n", ""}},
            {"/msg #music 'stop", {"to #music: 'stop\n", "PRIVMSG #music 'stop\n"}},
            {"/notice ann 'stop", {"jo notes: 'stop\n", "NOTICE ann 'stop\n"}},
            {"/me waves",
             {"* jo waves\n", "PRIVMSG ann :\x01"
                              "ACTION waves\x01\n"}},
            {"/me", {"! /me TEXT\n", ""}},
            {"/notice ann", {"! /notice NAME TEXT\n", ""}}};
        for (const auto& [line, outcome] : steps) {
            EXPECT_EQ(sentBy(line), outcome.second) << line;
            EXPECT_EQ(seen, outcome.first) << line;
        }
        typed("/leave");
    }
    EXPECT_EQ(heard, (Lines{"hi", "hi"})); // said where he is
    server.lose("x");
    seenWithin(1s);
    EXPECT_TRUE(typed("/me sighs").ends_with("* jo sighs\n")) << seen;
}

TEST_F(IrcTalkWordsTest, ALongActionGoesInSeveral) {
    typed("/connect irc.test jo #music");
    sentBy("/me " + std::string(600, 'x'));
    ASSERT_EQ(server.sent.size(), 2u);
    for (const std::string& line : server.sent) {
        EXPECT_TRUE(line.starts_with("PRIVMSG #music :\x01"
                                     "ACTION x"))
            << line;
        EXPECT_TRUE(line.ends_with("x\x01")) << line;
        EXPECT_LE(line.size(), 430u);
    }
}

TEST_F(IrcTalkWordsTest, WhatAServiceIsToldIsNeverShownAndNoCommand) {
    lines.connect([this](const ChatLine& line) { heard.push_back(line.text); });
    for (const char* const capabilities : {"echo-message", ""}) {
        server.capabilities = capabilities;
        typed("/connect irc.test jo #music");
        EXPECT_EQ(sentBy("/msg NickServ identify hush"), "PRIVMSG NickServ :identify hush\n");
        EXPECT_EQ(seen, "to NickServ: identify ****\n");
        EXPECT_EQ(typed("/query NickServ"), "you talk to NickServ\n"
                                            "jo: identify ****\n");
        shown->take();
        const auto begun = rooms->conversations.begun();
        EXPECT_EQ(rooms->withoutSecrets("identify hush", begun), "identify ****");
        EXPECT_EQ(rooms->withoutSecrets("/now identify hush", begun), "/now identify ****");
        EXPECT_EQ(rooms->withoutSecrets("/join #den hush", begun), "/join #den ****");
        EXPECT_EQ(rooms->withoutSecrets("/oper jo hush", begun), "/oper jo ****");
        loop.post([this] { rooms->room.say("identify hush"); });
        EXPECT_EQ(seenWithin(1s), "jo: identify ****\n");
        server.say(":nickserv!s@h NOTICE jo :your password is \x02hush\x02 now, hushed");
        EXPECT_EQ(seenWithin(1s), "nickserv notes: your password is **** now, hushed\n");
        server.say(":jo!o@host PRIVMSG NickServ :set password hush"); // another program of his
        EXPECT_EQ(seenWithin(1s), "jo: set password ****\n");
        typed("/leave");
        server.say(":ann!a@h MODE #music +ks hush");
        EXPECT_EQ(seenWithin(1s), "ann sets +ks ****\n");
        EXPECT_EQ(typed("/onconnect PASS hush"), "that line is run after each welcome here\n");
        EXPECT_TRUE(typed("/onconnect").ends_with("  PASS ****\n")) << seen;
        typed("/onconnect drop all");
    }
    EXPECT_EQ(heard, Lines{});
}

TEST_F(IrcTalkWordsTest, WhatWasMeantForAServiceIsSaidNowhereElseWhenTheConnectionIsLost) {
    lines.connect([this](const ChatLine& line) { heard.push_back(line.text); });
    typed("/connect irc.test jo #music");
    typed("/query NickServ");
    const auto begun = rooms->conversations.begun();
    server.lose("x");
    seenWithin(1ms);
    const std::string line = "identify hush";
    EXPECT_EQ(rooms->withoutSecrets(line, begun), "identify ****");
    EXPECT_FALSE(rooms->goBackFor(line, begun));
    EXPECT_EQ(shown->take(), "not said to NickServ: identify ****\n");
    EXPECT_TRUE(rooms->goBackFor("help", begun));
    EXPECT_TRUE(rooms->goBackFor("/msg NickServ identify hush", begun));
    EXPECT_EQ(heard, Lines{});
}

} // namespace
} // namespace larkspin
