// The life of a connection, and what a room owes to its server: patience and few words.
#include "shell/control_events.h"
#include "support/irc_machine.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace larkspin {
namespace {

class IrcSessionBegins : public IrcTest {};
class IrcSessionTest : public InMusic {};

constexpr int untouchedVolume = 50;

TEST_F(IrcSessionTest, ALostConnectionIsMadeAgainWithTheRoomsAndNothingOldIsSaid) {
    joined("#attic");
    irc.enterRoom("#attic");
    irc.leave(); // and isn't in it again
    joined("#den", "sesame");
    advance(100s);
    seenOf([&] { type(9); });
    server.say(":irc NOT", "");
    EXPECT_EQ(seenOf([&] { server.lose("the cable is out"); }),
              "- irc.test: the cable is out; trying again in 5 seconds\n"
              "- not said in #music: typed 5\n- not said in #music: typed 6\n"
              "- not said in #music: typed 7\n- not said in #music: typed 8\n"
              "- /again says once more what was not said where you are\n- you are at home\n");
    EXPECT_EQ(sentOf([] {}, 60s), "JOIN #music\nJOIN #den sesame\nMODE #music b\n");
    EXPECT_EQ(room.name(), "#music");
}

TEST_F(IrcSessionTest, AnotherNetworkGetsNothingThatWasForTheLast) {
    server.takes = [](const std::string& line) { return !line.starts_with("JOIN #music"); };
    joined("#den");
    joined("#attic", "sesame");
    server.takes = {};
    EXPECT_EQ(
        sentOf([&] { irc.connect({.host = "other.test"}, {.nick = "Owner"}, "#attic"); }, 10s),
        "QUIT :larkspin flies off\nJOIN #attic\n");
}

TEST_F(IrcSessionTest, TooMuchIsNotKept) {
    EXPECT_NE(seenOf([&] { type(1010); }).find("- too much waits to be said\n"), seen.npos);
    EXPECT_EQ(seenOf([&] { irc.voice().message("ann", "hi"); }),
              "- too much waits to be said\n- not said to ann: hi\n");
    EXPECT_EQ(seenOf([&] { irc.orders().whois("ann"); }), "- too much waits to be said\n");
}

TEST_F(IrcSessionTest, ARoomThatWasRefusedIsNeitherAskedForAgainNorTheRoom) {
    joined("#den");
    irc.enterRoom("#den");
    server.takes = [&](const std::string& line) {
        if (line == "JOIN #secret")
            server.say(":irc 473 Owner #secret :invited people only");
        return line == "JOIN #secret";
    };
    typed("'kw #secret", 10s);
    server.lose("x");
    EXPECT_EQ(sentOf([] {}, 60s), "JOIN #den,#music\n");
}

TEST_F(IrcSessionBegins, WithWaitsThatGrowToFiveMinutesAndAnewAfterAConnectionThatLasted) {
    server.refuses = true;
    begin();
    const auto tries = [&](std::chrono::seconds span) {
        const int before = server.opened;
        advance(span);
        return server.opened - before;
    };
    EXPECT_EQ(tries(76s), 4); // after 5, 10, 20, 40 seconds
    EXPECT_EQ(tries(1000s), 4);
    EXPECT_EQ(tries(3600s), 12);
    server.refuses = false;
    advance(150s);
    server.lose("x");
    EXPECT_EQ(tries(6s), 0);
    advance(400s);
    server.lose("x");
    EXPECT_EQ(tries(6s), 1);
    server.refuses = true;
    server.lose("x");
    EXPECT_EQ(tries(100s), 3);
    seenOf([&] { irc.connect({.host = "irc.test"}, {.nick = "Owner"}, ""); });
    EXPECT_EQ(tries(6s), 1); // anew, since the owner wants it
}

TEST_F(IrcSessionTest, IsKeptAliveBothWays) {
    server.held = 4096;
    EXPECT_EQ(sentOf([&] { server.say("PING :abc"); }), "PONG abc\n");
    server.held = 4097; // it asks and takes no answer
    EXPECT_EQ(sentOf([&] { server.say("PING :abc"); }), "");
    EXPECT_EQ(seenOf([] {}, 1h), ""); // has nothing to say, but answers
    server.silent = true;
    EXPECT_NE(seenOf([] {}, 181s).find("gone silent"), seen.npos);
}

// While it owes an answer, anything that comes shows that it is still there.
TEST_F(IrcSessionTest, AServerThatOwesAnAnswerIsGivenUpOnceNothingComes) {
    const std::string gone = "- irc.test: the server has gone silent; trying again in 5 seconds\n"
                             "- you are at home\n",
                      lags = "- irc.test takes more than 2 seconds to answer\n";
    advance(60s);
    server.silent = true;
    EXPECT_EQ(typed("hi", 59s), "Owner: hi\n" + lags);
    EXPECT_TRUE(seenOf([&] { server.say(":irc 372 Owner :news"); }, 59s)
                    .starts_with("- perhaps not said in #music: hi\n"))
        << seen;
    for (int minute = 0; minute < 8; ++minute)
        EXPECT_EQ(seenOf([&] { server.say(":irc 372 Owner :news"); }, 59s), "");
    EXPECT_EQ(seenOf([] {}, 61s), gone);
    server.silent = false; // and the next connection begins without a lag
    EXPECT_TRUE(seenOf([] {}, 100s)
                    .ends_with(" 10 seconds\n- you are Owner on irc.test\n- you are in #music\n"))
        << seen;
}

TEST_F(IrcSessionTest, ALagIsToldAsItBeginsAndWhenItIsOver) {
    advance(60s);
    server.lag = 3s;
    EXPECT_EQ(typed("hi", 5s), "Owner: hi\n- irc.test takes more than 2 seconds to answer\n");
    advance(95s);
    server.lag = 1s;
    EXPECT_EQ(seenOf([] {}, 100s), "- irc.test answers quickly again\n");
    EXPECT_EQ(typed("hi", 100s), "Owner: hi\n");
}

TEST_F(IrcSessionBegins, WithAServerThatNeverWelcomesWhichIsGivenUp) {
    server.silent = true;
    begin();
    EXPECT_EQ(seenOf([] {}, 60s),
              "- irc.test: the server doesn't answer; trying again in 5 seconds\n");
    EXPECT_EQ(seenOf([&] { irc.disconnect(); }), "- no longer connecting to irc.test\n");
    EXPECT_EQ(seenOf([] {}, 1h), "");
    EXPECT_EQ(server.opened, 1);
}

TEST_F(IrcSessionBegins, UnderAnotherNameWhoseOwnerIsTheOwner) {
    server.takes = [&](const std::string& line) {
        if (line == "NICK Owner")
            server.say(":irc 433 * Owner :in use");
        return line == "NICK Owner";
    };
    begin();
    EXPECT_EQ(room.currentScreenName(), "Owner_");
    EXPECT_EQ(typed("'volume 7"), "Owner_: 'volume 7\nOwner_: volume set:  <b>7</b>\n");
    EXPECT_EQ(sentOf([&] { server.lose("x"); }, 6s).find("Owner_"), std::string::npos);
}

// After what the server lets through at once, a line in two seconds. A program that says much
// waits for it, so that `stop` still comes in between; what the owner types goes first.
TEST_F(IrcSessionTest, WhatIsSaidIsPacedAndTheOwnerGoesFirst) {
    advance(60s);
    const Nanoseconds span = spanOfSaying(12);
    EXPECT_GT(span, 6s);
    EXPECT_LT(span, 20s);
    server.sent.clear();
    seenOf([&] { type(1); }, 10s);
    EXPECT_EQ(server.sent.front(), "PRIVMSG #music :typed 0");
    seenOf([&] { irc.limitSaid(1); }, 60s);
    const Nanoseconds limited = spanOfSaying(5);
    EXPECT_GT(limited, 50s);
    EXPECT_LE(limited, 4 * 80s); // of which each waits no longer
}

TEST(IrcSession, ARecitalStaysInTheRoomThatHasAskedForIt) {
    using Step = std::pair<const char*, void (*)(IrcMachine&)>;
    const struct {
        Step step;
        bool goesOn;
    } ways[] = {
        {{"into the next room", [](IrcMachine& machine) { machine.irc.enterRoom("#den"); }}, true},
        {{"into one of the same name",
          [](IrcMachine& machine) {
              machine.irc.connect({.host = "other.test"}, {.nick = "Owner"}, "#music");
          }},
         false},
        {{"home", [](IrcMachine& machine) { machine.irc.disconnect(); }}, false},
    };
    const Step begins[] = {
        {"by a line", [](IrcMachine& machine) { machine.room.say("'scrn"); }},
        {"by hand", [](IrcMachine& machine) { press(machine.window("notez"), "Label3"); }},
    };
    for (const auto& [way, goesOn] : ways)
        for (const auto& [how, begin] : begins) {
            SCOPED_TRACE(std::string(way.first) + ", begun " + how);
            IrcMachine machine;
            machine.begin();
            machine.joined("#den");
            machine.addNotes(12);
            machine.typed("'nshow", 60s);
            std::size_t sent = 0;
            machine.loop.once(5s, [&, go = way.second] {
                machine.shown.take();
                go(machine);
                sent = machine.server.sent.size();
            });
            machine.loop.once(7s, [&] { machine.room.sendChatLine("a tick"); }); // not of it
            const std::string told = machine.seenOf(
                [&, begin = begin] { machine.loop.post([&] { begin(machine); }); }, 90s);
            EXPECT_NE(told.find(": a tick\n"), told.npos);
            EXPECT_EQ(told.find("note"), told.npos) << told;
            const bool wentOn = std::ranges::any_of(
                machine.server.sent.begin() + static_cast<std::ptrdiff_t>(sent),
                machine.server.sent.end(), [](const std::string& line) {
                    return line.starts_with("PRIVMSG #music") && line.find("note 11") != line.npos;
                });
            EXPECT_EQ(wentOn, goesOn);
        }
}

TEST_F(IrcSessionTest, WhatWaitsAtTheEndIsNotSaidAndTheOwnerIsToldOfHisOwnLines) {
    server.takes = [](const std::string& line) { return line.starts_with("QUIT"); };
    loop.once(3s, [&] {
        type(8);
        irc.voice().message("ann", "psst");
        shown.take();
        server.sent.clear();
        irc.disconnect();
    });
    addNotes(12);
    EXPECT_EQ(typed("'scrn", 60s), "Owner: typed 0\nOwner: typed 1\n"
                                   "- 6 lines of yours were not said in #music\n"
                                   "- 1 line of yours was not said to ann\n"
                                   "- /again says once more what was not said where you are\n"
                                   "- part of an answer was not said in #music\n"
                                   "- you are at home\n- you have left irc.test\n");
    EXPECT_EQ(server.sent, Lines{"QUIT :larkspin flies off"});
    EXPECT_FALSE(server.isOpen());
}

class IrcSessionWithoutEcho : public IrcTest { // a line is heard as it is typed
protected:
    IrcSessionWithoutEcho() {
        server.capabilities = "";
        begin();
    }
    void types(int times, const std::string& line) {
        for (int time = 0; time < times; ++time)
            loop.post([this, line] { room.say(line); });
    }
};

TEST_F(IrcSessionWithoutEcho, ACommandIsDoneAtOnceHoweverMuchWaits) {
    irc.limitSaid(1);
    types(9, "'ver");
    types(1, "'repeat");
    bool isDone = false;
    loop.once(1s, [&] { isDone = state().rep; });
    advance(1s);
    EXPECT_TRUE(isDone);
}

TEST_F(IrcSessionWithoutEcho, AFarewellGoesBeforeTheEndHoweverMuchWaits) {
    types(6, "'ver");
    advance(1s);
    const std::string sent = sentOf([&] { types(1, "'signoff"); }, 30s);
    EXPECT_NE(sent.find("signing off"), sent.npos);
    EXPECT_EQ(sent.find('\n', sent.find("signing off")), sent.find("\nQUIT"));
    EXPECT_NE(seen.find("signing off"), seen.npos);
}

TEST_F(IrcSessionWithoutEcho, ManyCommandsAtOnceLeaveTheProgramAnswerable) {
    addNotes(3);
    types(100, "'ver");
    Nanoseconds asked{}, answered{};
    loop.once(6s, [&] {
        asked = loop.now();
        server.say("PING :x");
    });
    server.takes = [&](const std::string& line) {
        answered = line == "PONG x" ? loop.now() : answered;
        return false;
    };
    advance(60s);
    EXPECT_LT(answered - asked, 1s);
    EXPECT_GE(answered, asked);
}

TEST_F(IrcSessionBegins, AndAStoppedRecitalEndsWithinAFewLines) {
    Lines songs;
    for (int song = 10; song < 40; ++song)
        songs.push_back("ride" + std::to_string(song) + ".mp3");
    begin(songs);
    typed("'play ride");
    std::string atStop;
    loop.once(20s, [&] {
        atStop = shown.take();
        press(window("stops"), "label");
    });
    const std::string all = typed("'yes", 60s);
    EXPECT_EQ(atStop.find("<b>20</b>"), std::string::npos); // by its own waits it would be there
    EXPECT_LE(std::ranges::count(all, '\n'), 1);
    EXPECT_TRUE(all.ends_with("selection scroll aborted\n"));
}

TEST_F(IrcSessionBegins, AndSixtyRecitalsThatWaitForTheServerTakeNoPlaceOnTheStack) {
    begin();
    addNotes(5);
    for (int number = 0; number < 60; ++number)
        loop.once(number * 1s, [&] { room.say("'scrn"); });
    int depth = 0;
    loop.once(60s, [&] { depth = loop.atWork().depth; });
    advance(60s);
    EXPECT_EQ(depth, 1);
}

TEST_F(IrcSessionTest, WhatWaitsIsNotSaidAfterTheOwnerHasGone) {
    joined("#den");
    advance(60s);
    const auto sayMuch = [&] {
        type(8);
        irc.sendChatLine("said");
    };
    const std::string sent = sentOf([&] { sayMuch(), irc.leave(); }, 60s);
    EXPECT_EQ(sent.find("PRIVMSG", sent.find("PART #music")), sent.npos);
    EXPECT_NE(sent.find("typed 7\nPART"), sent.npos);
    EXPECT_EQ(seenOf([&] {
                  sayMuch();
                  shown.take();
                  server.say(":bob!b@h KICK #den Owner :out");
              }),
              "- bob puts you out of #den: out\n- you have left #den\n"
              "- not said in #den: typed 5\n- not said in #den: typed 6\n"
              "- not said in #den: typed 7\n"
              "- /again says once more what was not said where you are\n"
              "- part of an answer was not said in #den\n- you are at home\n");
}

TEST_F(IrcSessionTest, AFloodLeavesTheProgramAnswerable) {
    std::string flood;
    for (int line = 0; line < 10'000; ++line)
        flood += ":n" + std::to_string(line) + "!x@y JOIN #music\r\n:ann!a@h PRIVMSG #music :" +
                 "\x02\x03"
                 "04,05 colours \x1b[2J 'volume 7\r\nPING :" +
                 std::to_string(line) + "\r\n";
    told(flood + ":ann!a@h PRIVMSG #music :" + std::string(1'000'000, 'x'));
    EXPECT_EQ(state().HScroll2, untouchedVolume);
    EXPECT_EQ(typed("'volume 7"), "Owner: 'volume 7\nOwner: volume set:  <b>7</b>\n");
}

} // namespace
} // namespace larkspin
