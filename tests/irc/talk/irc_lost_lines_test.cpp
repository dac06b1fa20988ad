// Lines that couldn't be said: they are told, and can be said again.
#include "support/irc_machine.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

class IrcLostLinesTest : public IrcTest {};

const std::string echoed = "echo-message", labelled = "labeled-response batch",
                  both = echoed + ' ' + labelled;

void freeze(IrcMachine& machine) {
    machine.server.takes = [](const std::string&) { return true; };
}

// Messages are answered so, by their labels where they have some.
void answerBy(IrcMachine& machine, const std::string& answer) {
    machine.server.takes = [&server = machine.server, answer](const std::string& line) {
        const bool isSaid = line.starts_with("PRIVMSG");
        if (isSaid)
            server.say((server.label.empty() ? "" : "@label=" + server.label + ' ') + answer);
        return isSaid;
    };
}

std::string again(IrcMachine& machine) {
    machine.server.takes = nullptr;
    return machine.sentOf([&] { machine.loop.post([&] { machine.irc.voice().sayAgain(); }); }, 1s);
}

// The word turns something over, so that it would show if it were obeyed twice.
TEST(IrcLostLines, EachIsToldAndSaidAgainAndObeyedOnce) {
    const struct {
        const char* way;
        std::vector<std::string> capabilities;
        std::string told;
        std::function<void(IrcMachine&)> begin, end;
    } cases[] = {
        {"refused",
         {echoed, both, "", labelled},
         "- not said in #music: 'repeat\n",
         [](auto& machine) { answerBy(machine, ":irc 404 Owner #music :Cannot send (+m)"); },
         [](auto&) {}},
        {"refused in another way",
         {echoed, both, "", labelled},
         "- not said in #music: 'repeat\n",
         [](auto& machine) { answerBy(machine, ":irc FAIL PRIVMSG NO_CAPS #music :Don't shout"); },
         [](auto&) {}},
        {"kept from somebody who takes none",
         {echoed, both, "", labelled},
         "- not said in #music: 'repeat\n",
         [](auto& machine) { answerBy(machine, ":irc 716 Owner #music :is in +g mode"); },
         [](auto&) {}},
        {"refused for a word in it",
         {echoed, both, "", labelled},
         "- not said in #music: 'repeat\n",
         [](auto& machine) { answerBy(machine, ":irc 936 Owner #music repeat :is a bad word"); },
         [](auto&) {}},
        {"too much for the server",
         {echoed, both, "", labelled},
         "- not said in #music: 'repeat\n",
         [](auto& machine) { answerBy(machine, ":irc 439 Owner #music :Too many targets"); },
         [](auto&) {}},
        {"taken without a word",
         {both},
         "- not said in #music: 'repeat\n",
         [](auto& machine) { answerBy(machine, ":irc ACK"); },
         [](auto&) {}},
        {"passed over",
         {echoed},
         "- not said in #music: 'repeat\n",
         freeze,
         [](auto& machine) {
             machine.server.takes = nullptr;
             machine.room.say("next");
             machine.advance(20s);
         }},
        {"late",
         {echoed, both},
         "- perhaps not said in #music: 'repeat\n",
         freeze,
         [](auto& machine) { machine.advance(61s); }},
        {"on its way",
         {echoed, both, "", labelled},
         "- perhaps not said in #music: 'repeat\n",
         [](auto& machine) {
             freeze(machine);
             machine.server.silent = true;
         },
         [](auto& machine) {
             machine.server.lose("x");
             machine.server.silent = false;
             machine.server.takes = nullptr;
             machine.advance(60s);
         }},
    };
    for (const auto& each : cases)
        for (const std::string& capabilities : each.capabilities) {
            SCOPED_TRACE(each.way + (": " + capabilities));
            IrcMachine machine;
            machine.server.capabilities = capabilities;
            machine.begin();
            each.begin(machine);
            const std::string seen = machine.seenOf([&] {
                machine.room.say("'repeat");
                machine.advance(1ms);
                each.end(machine);
            });
            const auto told = seen.find(each.told);
            EXPECT_NE(told, seen.npos) << seen;
            EXPECT_EQ(seen.find("said in #music: '", told + each.told.size()), seen.npos) << seen;
            EXPECT_TRUE(again(machine).starts_with("PRIVMSG #music 'repeat\n"));
            EXPECT_TRUE(machine.state().rep);
            EXPECT_EQ(again(machine), "");
            EXPECT_EQ(machine.seen, "- nothing of yours was lost here\n");
        }
}

TEST(IrcLostLines, WhatTheServerHasReadIsSaid) {
    for (const std::string& capabilities : {echoed, both, std::string(), labelled}) {
        IrcMachine machine;
        machine.server.capabilities = capabilities;
        machine.begin();
        machine.typed("hi", 60s);
        machine.typed("oh");
        EXPECT_EQ(machine.seenOf([&] { machine.irc.disconnect(); }).find("said"), std::string::npos)
            << capabilities;
    }
}

TEST(IrcLostLines, WhoLeavesAServerThatDoesNotAnswerIsToldWhatItMayNotHaveRead) {
    for (const std::string& capabilities : {echoed, both, std::string(), labelled}) {
        IrcMachine machine;
        machine.server.capabilities = capabilities;
        machine.begin();
        machine.server.silent = true;
        machine.typed("hi", 45s);
        EXPECT_TRUE(machine.seenOf([&] { machine.irc.disconnect(); })
                        .starts_with("- perhaps not said in #music: hi\n"))
            << capabilities << ": " << machine.seen;
        machine.server.silent = false;
        machine.irc.connect({.host = "other.test"}, {.nick = "Owner"}, "#music");
        machine.advance(1s);
        EXPECT_EQ(again(machine), "") << "said on another network";
    }
}

TEST(IrcLostLines, WhatComesBackAfterAllIsShownOnceAndNotSaidAgain) {
    for (const std::string& capabilities : {echoed, both}) {
        IrcMachine machine;
        machine.server.capabilities = capabilities;
        machine.begin();
        freeze(machine);
        machine.typed("late");
        const std::string label = machine.server.label;
        EXPECT_EQ(machine.seenOf([] {}, 61s),
                  "Owner: late\n- perhaps not said in #music: late\n"
                  "- /again says once more what was not said where you are\n");
        EXPECT_EQ(machine.told((label.empty() ? "" : "@label=" + label + ' ') +
                               ":Owner!o@host PRIVMSG #music :late"),
                  "- said after all in #music: late\n");
        EXPECT_EQ(again(machine), "");
    }
}

TEST_F(IrcLostLinesTest, EachIsSaidAgainWhereItBelongsAndInOrder) {
    begin();
    joined("#den");
    freeze(*this);
    typed("one");
    seenOf([&] { irc.voice().message("ann", "two"); });
    seenOf([&] { irc.enterRoom("#den"); });
    typed("three");
    seenOf([&] { irc.enterRoom("#music"); });
    typed(std::string(120, 'x'));
    seenOf([&] { irc.voice().act("waves"); });
    EXPECT_EQ(seenOf([] {}, 200s).substr(seen.find("- perhaps")),
              "- perhaps not said in #music: one\n"
              "- /again says once more what was not said where you are\n"
              "- perhaps not said to ann: two\n- perhaps not said in #den: three\n"
              "- perhaps not said in #music: " +
                  std::string(100, 'x') + "\u2026\n- perhaps not said in #music: /me waves\n");
    EXPECT_EQ(again(*this), "PRIVMSG #music one\nPRIVMSG #music " + std::string(120, 'x') +
                                "\nPRIVMSG #music :\x01"
                                "ACTION waves\x01\n");
    told(":ann!a@h NICK eve");
    seenOf([&] { irc.talkTo("eve"); });
    EXPECT_EQ(again(*this), "PRIVMSG eve two\n");
    seenOf([&] { irc.disconnect(); });
    EXPECT_EQ(again(*this), "");
    EXPECT_EQ(seen, "- /again is for a room or a talk on a network\n");
}

TEST_F(IrcLostLinesTest, WhatIsTypedInATalkGoesToWhomItWasBegunFor) {
    begin();
    seenOf([&] { irc.talkTo("ann"); });
    for (const bool isKnownAsEve : {false, true}) {
        if (isKnownAsEve) {
            told(":eve!e@h NICK ann");
            told(":eve!a@h PRIVMSG Owner :it's me");
            seenOf([&] { irc.talkTo("ann"); });
        }
        const auto begun = conversations.begun();
        EXPECT_TRUE(
            told(":ann!a@h NICK eve\r\n:bob!b@h NICK ann").starts_with("- ann is now called eve\n"))
            << seen;
        conversations.goBackTo(begun);
        EXPECT_EQ(sentOf([&] { room.say("line"); }), "PRIVMSG eve line\n");
    }
    told(":ann!b@h PRIVMSG Owner :hi"); // bob
    seenOf([&] { irc.talkTo("ann"); });
    EXPECT_EQ(sentOf([&] { room.say("line"); }), "PRIVMSG ann line\n");
}

TEST_F(IrcLostLinesTest, WhatWaitsForSomebodyFollowsHisName) {
    begin();
    const std::string sent = sentOf(
        [&] {
            for (int line = 0; line < 20; ++line)
                irc.voice().message("ann", std::to_string(line));
            server.say(":ann!a@h NICK eve\r\n:bob!b@h NICK ann");
        },
        60s);
    EXPECT_NE(sent.find("PRIVMSG ann 0\n"), sent.npos);
    EXPECT_NE(sent.find("PRIVMSG eve 19\n"), sent.npos) << sent;
    EXPECT_EQ(sent.find("PRIVMSG ann 19\n"), sent.npos);
}

TEST_F(IrcLostLinesTest, WhatWaitsForARoomThatIsLeftIsNotSaidHoweverItsNameIsWritten) {
    begin();
    const std::string sent = sentOf(
        [&] {
            type(20);
            irc.voice().message("#MUSIC", "late");
            server.say(":ann!a@h KICK #Music Owner");
        },
        60s);
    EXPECT_EQ(sent.find("typed 19\n"), sent.npos) << sent;
    EXPECT_EQ(sent.find("late\n"), sent.npos) << sent;
}

TEST_F(IrcLostLinesTest, WithoutEchoARefusalIsAboutTheLineThatHasJustGone) {
    server.capabilities = "";
    begin();
    typed("taken");
    typed("'volume 7", 3s); // the server may have more to read, but not to wait for
    answerBy(*this, ":irc 404 Owner #music :Cannot send (+b)");
    EXPECT_NE(typed("refused").find("- not said in #music: refused\n"), seen.npos) << seen;
    server.takes = nullptr;
    EXPECT_EQ(again(*this), "PRIVMSG #music refused\n");
}

TEST_F(IrcLostLinesTest, OfAnAnswerOneWordIsEnough) {
    begin();
    addNotes(40);
    typed("'scrn");
    answerBy(*this, ":irc 404 Owner #music :Cannot send (+m)");
    const std::string word = "- part of an answer was not said in #music\n",
                      all = seenOf([] {}, 30s);
    const auto first = all.find(word);
    EXPECT_NE(first, all.npos) << all;
    EXPECT_EQ(all.find(word, first + 1), all.npos) << all;
    for (const bool isLater : {false, true}) {
        seenOf([&] { loop.post([&] { irc.sendChatLine("a tick"); }); }, 10s);
        EXPECT_EQ(seen, "- #music: Cannot send (+m)\n" + (isLater ? word : ""));
        advance(60s);
    }
}

TEST_F(IrcLostLinesTest, ACommandThatFoundNoPlaceIsObeyedOnceItIsSaid) {
    server.capabilities = "";
    begin();
    for (int line = 0; line < 1010; ++line)
        irc.voice().message("ann", "hi");
    typed("'repeat", 1h);
    EXPECT_FALSE(state().rep);
    EXPECT_TRUE(again(*this).starts_with("PRIVMSG #music 'repeat\n"));
    EXPECT_TRUE(state().rep);
}

TEST_F(IrcLostLinesTest, WhatWaitsAsTheProcessEndsIsTold) {
    begin();
    EXPECT_TRUE(seenOf([&] {
                    type(7);
                    irc.finish();
                }).find("- not said in #music: typed 6\n") != std::string::npos)
        << seen;
}

} // namespace
} // namespace larkspin
