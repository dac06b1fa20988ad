// Who is obeyed in a room on a network, and who isn't, however he goes about it.
#include "support/irc_machine.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

class IrcObeyingTest : public InMusic {};

constexpr int untouched = 50; // the volume, which each of them would turn

TEST(IrcObeying, NothingThatComesFromElsewhereIsACommand) {
    static const char* const lines[] = {
        ":ann!a@h PRIVMSG #music :'volume 7",
        // Another program behind the same bouncer, or what that plays back.
        ":Owner!o@host PRIVMSG #music :'volume 7",
        "@time=2001-01-01T00:00:00.000Z;batch=1 :Owner!o@host PRIVMSG #music :'volume 7",
        ":OWNER!o@host PRIVMSG #MUSIC :'volume 7",
        ":Owner PRIVMSG #music :'volume 7",
        ":Owner!o@host NOTICE #music :'volume 7",
        ":Owner!o@host PRIVMSG Owner :'volume 7",
        ":Owner!o@host PRIVMSG @#music :'volume 7",
        ":Owner!o@host PRIVMSG #other :'volume 7",
        ":Owner!o@host PRIVMSG #music :\x01"
        "ACTION 'volume 7\x01",
        ":Owner\u200B!o@h PRIVMSG #music :'volume 7",
        ":ann!a@h PRIVMSG #music :hi\rOwner: 'volume 7\n:Owner!x@y PRIVMSG #music :'volume 7",
        "PRIVMSG #music :'volume 7",
        ":!@ PRIVMSG #music :'volume 7",
        // Somebody takes the name that the owner had a moment ago.
        ":Owner!o@host NICK Boss\r\n:ann!a@h NICK Owner\r\n"
        ":Owner!a@h PRIVMSG #music :'volume 7",
        ":irc 433 Owner Boss :in use\r\n:Boss!a@h PRIVMSG #music :'volume 7",
        ":Owner!o@host PART #music\r\n:Owner!o@host PRIVMSG #music :'volume 7",
        "@label= :Owner!o@host PRIVMSG #music :'volume 7",
        "@label=1 :Owner!o@host PRIVMSG #music :'volume 7",
        "@label=1 BATCH +1 labeled-response\r\n@batch=1 :Owner!o@host PRIVMSG #music :'volume 7",
        "BATCH +1 chathistory #music\r\n@batch=1 :Owner!o@host PRIVMSG #music :'volume 7",
        "BATCH +1 znc.in/playback ann\r\n@batch=1 :ann!a@h PRIVMSG Owner :'volume 7\r\n"
        "@batch=1 :Owner!o@host PRIVMSG ann :'volume 7",
    };
    for (const char* capabilities :
         {"echo-message multi-prefix", "", "echo-message labeled-response batch"})
        for (const char* line : lines) {
            IrcMachine machine;
            machine.server.capabilities = capabilities;
            machine.begin();
            machine.told(line);
            EXPECT_EQ(machine.state().HScroll2, untouched) << line;
        }
}

TEST(IrcObeying, WhatComesBackCountsOnceAndOnlyInItsRoomInTimeAndInTurn) {
    const std::string seven = ":Owner!o@host PRIVMSG #music :'volume 7",
                      nine = ":Owner!o@host PRIVMSG #music :'volume 9";
    const struct {
        Lines told;
        int volume;
        std::chrono::seconds later{};
    } cases[] = {
        {{seven}, 7},
        {{seven, nine}, 9},
        {{seven, nine, seven}, 9},
        {{nine, seven}, 9},
        {{":Owner!o@host PRIVMSG #other :'volume 7"}, untouched},
        {{":irc 404 Owner #music :Cannot send to channel", seven}, untouched},
        // What took too long has counted.
        {{seven}, 9, 1s},
        {{seven}, 9, 61s},
        {{":irc 404 Owner #music :Cannot send to channel", seven}, 9, 1s},
    };
    for (const auto& each : cases) {
        IrcMachine machine;
        machine.begin();
        machine.server.takes = [](const std::string&) { return true; }; // no echo by itself
        machine.typed("'volume 7");
        EXPECT_EQ(machine.typed("'volume 9"), "");
        machine.advance(each.later);
        for (const std::string& line : each.told)
            machine.told(line);
        EXPECT_EQ(machine.state().HScroll2, each.volume) << each.told.front();
    }
}

// A dollar stands for the label of the line that the owner has typed.
TEST(IrcObeying, WithLabelsALineCountsByItsLabelAlone) {
    const std::string echo = ":Owner!o@host PRIVMSG #music :'volume 7",
                      labelled = "@label=$ " + echo, inBatch = "@batch=1 " + echo;
    const struct {
        Lines told;
        bool counts = false;
    } cases[] = {
        {{labelled}, true},
        {{"@label=$ :Owner!o@host PRIVMSG #MUSIC :as the server writes it"}, true},
        {{"@label=$ BATCH +1 labeled-response", inBatch}, true},
        {{"@label=$ BATCH +1 labeled-response", "@batch=1 BATCH +2 x", "@batch=2 " + echo}, true},
        {{":Owner!o@host PRIVMSG #music :hi", labelled}, true},
        {{":irc 404 Owner #music :no", labelled}, true},
        {{echo}},
        {{"@label=$1 " + echo}},
        {{"@label=$ :ann!a@h PRIVMSG #music :'volume 7"}},
        {{"@label=$ :Owner!o@host PRIVMSG #den :'volume 7"}},
        {{"@label=$ :Owner!o@host PRIVMSG Owner :'volume 7"}},
        {{"@label=$ :Owner!o@host NOTICE #music :'volume 7"}},
        {{"@label=$ :irc ACK", labelled}},
        {{"@label=$ :irc ACK", echo}},
        {{"@label=$ :irc 404 Owner #music :no", labelled}},
        {{"@label=$ :irc 999 Owner :x", "@label=$ FAIL PRIVMSG NO #music :no", labelled}},
        {{"BATCH +1 labeled-response", inBatch}},
        {{"@label=$ BATCH +1 labeled-response", "BATCH -1", inBatch}},
        {{"@label=$ BATCH +1 chathistory #music", inBatch}},
        {{"BATCH +1 znc.in/playback #music", "@batch=1;label=$ " + echo}},
        {{"BATCH +1 draft/chathistory #music", "@batch=1;label=$ BATCH +2 labeled-response",
          "BATCH -1", "@batch=2 " + echo}},
        {{"@batch=9;label=$ " + echo}},
    };
    for (const auto& each : cases) {
        IrcMachine machine;
        machine.server.capabilities = "echo-message labeled-response batch";
        machine.begin();
        machine.joined("#den");
        machine.server.takes = [](const std::string&) { return true; };
        machine.typed("'volume 7");
        for (std::string line : each.told) {
            if (const auto sign = line.find('$'); sign != line.npos)
                line.replace(sign, 1, machine.server.label);
            machine.told(line);
        }
        EXPECT_EQ(machine.state().HScroll2, each.counts ? 7 : untouched) << each.told.back();
    }
}

TEST(IrcObeying, WhatIsPlayedBackIsNoEchoAndHappensToNobody) {
    for (const char* kind : {"chathistory", "draft/chathistory", "znc.in/playback"}) {
        IrcMachine machine;
        machine.begin();
        machine.server.takes = [](const std::string&) { return true; };
        machine.typed("'volume 7");
        machine.told(std::string("BATCH +1 ") + kind + " #music");
        for (const char* line :
             {":Owner!o@host PRIVMSG #music :'volume 7", ":bob!b@h KICK #music Owner :out",
              ":Owner!o@host NICK Boss", ":Owner!o@host PART #music", ":irc 404 Owner #music :no"})
            machine.told(std::string("@batch=1 ") + line);
        EXPECT_EQ(machine.state().HScroll2, untouched) << kind;
        EXPECT_EQ(machine.room.ownName(), "Owner") << kind;
        machine.told("BATCH -1\r\n:Owner!o@host PRIVMSG #music :'volume 7");
        EXPECT_EQ(machine.state().HScroll2, 7) << kind;
    }
}

TEST_F(IrcObeyingTest, WhatIsNoEchoUnderTheOwnersNameIsShownAtMost) {
    EXPECT_EQ(told(":Owner!o@host PRIVMSG #music :'volume 7"), "Owner: 'volume 7\n");
    told(":ann!a@h PRIVMSG #music :'volume 7");
    EXPECT_EQ(traced().back(), "line of others");
}

TEST(IrcObeying, WhatCameBackIsACommandInItsRoomAndNoneOnceThatIsLeft) {
    for (const bool leaves : {true, false}) {
        IrcMachine machine;
        machine.begin();
        machine.seenOf([&] { machine.irc.join("#den"); });
        machine.server.takes = [](const std::string&) { return true; };
        machine.typed("'volume 7");
        machine.seenOf([&] { machine.irc.enterRoom("#den"); });
        machine.told(":Owner!o@host PRIVMSG #den :'volume 7");
        EXPECT_EQ(machine.state().HScroll2, untouched);
        const std::string seen =
            machine.told(":Owner!o@host PRIVMSG #music :'volume 7" +
                         std::string(leaves ? "\r\n:Owner!o@host PART #music" : ""));
        EXPECT_EQ(seen, leaves ? "- you have left #music\n" : "");
        EXPECT_EQ(machine.state().HScroll2, leaves ? untouched : 7);
        if (leaves)
            continue;
        machine.advance(10s);
        EXPECT_TRUE(machine.server.sent.back().starts_with("PRIVMSG #music :\x03"))
            << machine.server.sent.back();
    }
}

TEST_F(IrcObeyingTest, AChannelWithoutColoursStillSendsTheOwnersLine) {
    server.takes = [&](const std::string& line) {
        server.say(":Owner!o@host PRIVMSG #music :'volume 7");
        return line.starts_with("PRIVMSG #music");
    };
    EXPECT_EQ(typed("<b>'volume 7").substr(0, 20), "Owner: <b>'volume 7\n");
}

TEST_F(IrcObeyingTest, TheOwnerIsWhoeverTheServerSaysThatThisConnectionIs) {
    told(":Owner!o@host NICK :Guest7\r\n:Guest7!o@host NICK");
    server.nick = "Guest7";
    EXPECT_EQ(room.ownName(), "Guest7");
    EXPECT_EQ(typed("'volume 7"), "Guest7: 'volume 7\nGuest7: volume set:  <b>7</b>\n");
    EXPECT_EQ(state().HScroll2, 7);
}

TEST_F(IrcObeyingTest, NamesAreComparedAsTheServerDoes) {
    told(":Owner!o@host NICK :Own[er]");
    told(":own{ER}!o@host NICK :Boss");
    EXPECT_EQ(room.currentScreenName(), "Boss");
}

TEST_F(IrcObeyingTest, WhatIsTypedOutsideARoomIsSaidNowhere) {
    told(":bob!b@h KICK #music Owner :x");
    EXPECT_EQ(sentOf([&] { room.say("'volume 7"); }), "");
    EXPECT_EQ(sentOf([&] { room.sendChatLine("hi"); }), "");
    EXPECT_EQ(sentOf([&] { irc.sendChatLine("hi"); }), "");
}

} // namespace
} // namespace larkspin
