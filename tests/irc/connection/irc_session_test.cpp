// The life of a connection, and what a room owes to its server: patience and few words.
#include "shell/control_events.h"
#include "support/irc_machine.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace larkspin {
namespace {

constexpr int untouchedVolume = 50;

TEST(IrcSession, ALostConnectionIsMadeAgainWithTheRoomsAndNothingOldIsSaid) {
    IrcMachine machine;
    machine.begin();
    machine.seenOf([&] { machine.irc.join("#den", "sesame"); }, 100s);
    machine.seenOf([&] {
        for (int line = 0; line < 9; ++line)
            machine.room.say("line " + std::to_string(line));
    });
    EXPECT_EQ(machine.seenOf([&] { machine.server.lose("the cable is out"); }),
              "- irc.test: the cable is out; trying again in 5 seconds\n"
              "- 4 lines of yours had not been sent yet, and won't be\n");
    EXPECT_EQ(machine.room.currentScreenName(), "");
    EXPECT_EQ(machine.sentOf([] {}, 60s), "JOIN #music\nJOIN #den sesame\nMODE #music b\n");
    EXPECT_EQ(machine.room.name(), "#music");
}

TEST(IrcSession, ARoomThatWasRefusedIsNeitherAskedForAgainNorTheRoom) {
    IrcMachine machine;
    machine.begin();
    machine.seenOf([&] { machine.irc.join("#den"); });
    machine.server.takes = [&](const std::string& line) {
        if (line == "JOIN #secret")
            machine.server.say(":irc 473 Owner #secret :invited people only");
        return line == "JOIN #secret";
    };
    machine.typed("'kw #secret", 10s);
    machine.server.lose("x");
    EXPECT_EQ(machine.sentOf([] {}, 60s), "JOIN #music,#den\nMODE #music b\n");
}

TEST(IrcSession, WaitsGrowToFiveMinutesAndBeginAnewAfterAConnectionThatLasted) {
    IrcMachine machine;
    machine.server.refuses = true;
    machine.begin();
    const auto tries = [&](std::chrono::seconds span) {
        const int before = machine.server.opened;
        machine.advance(span);
        return machine.server.opened - before;
    };
    EXPECT_EQ(tries(76s), 4); // after 5, 10, 20, 40 seconds
    EXPECT_EQ(tries(1000s), 4);
    EXPECT_EQ(tries(3600s), 12);
    machine.server.refuses = false;
    machine.advance(150s);
    machine.server.lose("x");
    EXPECT_EQ(tries(6s), 0);
    machine.advance(400s);
    machine.server.lose("x");
    EXPECT_EQ(tries(6s), 1);
}

TEST(IrcSession, IsKeptAliveBothWays) {
    IrcMachine machine;
    machine.begin();
    EXPECT_EQ(machine.sentOf([&] { machine.server.say("PING :abc"); }), "PONG abc\n");
    machine.server.silent = true;
    EXPECT_EQ(machine.sentOf([] {}, 121s), "PING larkspin\n");
    EXPECT_EQ(machine.sentOf([&] { machine.server.say(":irc PONG irc larkspin"); }, 100s), "");
    EXPECT_EQ(machine.seenOf([] {}, 90s),
              "- irc.test: the server has gone silent; trying again in 5 seconds\n");
}

TEST(IrcSession, AServerThatNeverWelcomesIsGivenUp) {
    IrcMachine machine;
    machine.server.silent = true;
    machine.begin();
    EXPECT_EQ(machine.seenOf([] {}, 60s),
              "- irc.test: the server doesn't answer; trying again in 5 seconds\n");
    EXPECT_EQ(machine.seenOf([&] { machine.irc.disconnect(); }),
              "- no longer connecting to irc.test\n");
    EXPECT_EQ(machine.seenOf([] {}, 1h), "");
    EXPECT_EQ(machine.server.opened, 1);
}

TEST(IrcSession, AnotherNameIsTakenAndTheOwnerIsThatOne) {
    IrcMachine machine;
    machine.server.takes = [&](const std::string& line) {
        if (line == "NICK Owner")
            machine.server.say(":irc 433 * Owner :in use");
        return line == "NICK Owner";
    };
    machine.begin();
    EXPECT_EQ(machine.room.currentScreenName(), "Owner_");
    EXPECT_EQ(machine.typed("'volume 7"), "Owner_: 'volume 7\nOwner_: volume set:  <b>7</b>\n");
    EXPECT_EQ(machine.sentOf([&] { machine.server.lose("x"); }, 6s).find("Owner_"),
              std::string::npos);
}

// After what the server lets through at once, a line in two seconds. A program that says much
// waits for it, so that `stop` still comes in between; what the owner types goes first.
TEST(IrcSession, WhatIsSaidIsPacedAndTheOwnerGoesFirst) {
    IrcMachine machine;
    machine.begin();
    machine.advance(60s);
    const Nanoseconds begun = machine.loop.now();
    for (int line = 0; line < 12; ++line)
        machine.irc.sendChatLine("line " + std::to_string(line));
    EXPECT_GT(machine.loop.now() - begun, 6s);
    EXPECT_LT(machine.loop.now() - begun, 20s);
    machine.server.sent.clear();
    machine.seenOf([&] { machine.room.say("typed"); }, 10s);
    EXPECT_EQ(machine.server.sent.front(), "PRIVMSG #music typed");
    machine.seenOf([&] { machine.irc.limitSaid(1); }, 60s);
    const Nanoseconds limited = machine.loop.now();
    for (int line = 0; line < 5; ++line)
        machine.irc.sendChatLine("line " + std::to_string(line));
    EXPECT_LE(machine.loop.now() - limited, 2 * 80s); // of which each waits no longer
}

TEST(IrcSession, ARecitalStaysInTheRoomThatHasAskedForIt) {
    const std::pair<const char*, void (*)(IrcMachine&)> ways[] = {
        {"into the next room", [](IrcMachine& machine) { machine.irc.enterRoom(2); }},
        {"into one of the same name",
         [](IrcMachine& machine) {
             machine.irc.connect({.host = "other.test"}, {.nick = "Owner"}, "#music");
         }},
        {"home", [](IrcMachine& machine) { machine.irc.disconnect(); }},
    };
    const std::pair<const char*, void (*)(IrcMachine&)> begins[] = {
        {"by a line", [](IrcMachine& machine) { machine.room.say("'scrn"); }},
        {"by hand", [](IrcMachine& machine) { press(machine.window("notez"), "Label3"); }},
    };
    for (const auto& [where, go] : ways)
        for (const auto& [how, begin] : begins) {
            SCOPED_TRACE(std::string(where) + ", begun " + how);
            IrcMachine machine;
            machine.begin();
            machine.seenOf([&] { machine.irc.join("#den"); });
            for (int note = 0; note < 12; ++note)
                machine.state().notes.add("note " + std::to_string(note));
            machine.typed("'nshow", 60s);
            machine.loop.once(5s, [&, go = go] { go(machine), machine.seen.clear(); });
            machine.loop.once(7s, [&] { machine.room.sendChatLine("a tick"); }); // not of it
            std::string told = machine.seenOf(
                [&, begin = begin] { machine.loop.post([&] { begin(machine); }); }, 60s);
            EXPECT_NE(told.find(": a tick\n"), told.npos);
            for (std::size_t late; (late = told.find("- to #music: ")) != told.npos;)
                told.erase(late, told.find('\n', late) - late); // what was on its way already
            EXPECT_EQ(told.find("note"), told.npos) << told;
        }
}

TEST(IrcSession, AFarewellGoesBeforeTheEndHoweverMuchWaits) {
    IrcMachine machine;
    machine.begin();
    for (int line = 0; line < 6; ++line)
        machine.typed("'ver");
    machine.server.sent.clear();
    machine.typed("'signoff", 30s);
    const auto& sent = machine.server.sent;
    ASSERT_GE(sent.size(), 2U);
    EXPECT_NE(sent[sent.size() - 2].find("signing off"), std::string::npos);
    EXPECT_EQ(sent.back().substr(0, 4), "QUIT");
}

TEST(IrcSession, WhatWaitsAtTheEndIsNotSaidAndTheOwnerIsToldOfHisOwnLines) {
    IrcMachine machine;
    machine.begin();
    machine.loop.once(3s, [&] {
        for (int line = 0; line < 6; ++line)
            machine.room.say("line " + std::to_string(line));
        machine.seen.clear();
        machine.server.sent.clear();
        machine.irc.disconnect();
    });
    for (int note = 0; note < 12; ++note)
        machine.state().notes.add("note " + std::to_string(note));
    EXPECT_EQ(machine.typed("'scrn", 60s),
              "- 6 lines of yours had not been sent yet, and won't be\n"
              "- you have left irc.test\n");
    EXPECT_EQ(machine.server.sent, std::vector<std::string>{"QUIT :larkspin flies off"});
}

struct HeardAtOnce : IrcMachine { // without an echo a line is heard as it is typed
    HeardAtOnce() {
        server.capabilities = "";
        begin();
    }
    void types(int times, const std::string& line) {
        for (int time = 0; time < times; ++time)
            loop.post([this, line] { room.say(line); });
    }
};

TEST(IrcSession, ACommandIsDoneAtOnceHoweverMuchWaits) {
    HeardAtOnce machine;
    machine.irc.limitSaid(1);
    machine.types(9, "'ver");
    machine.types(1, "'repeat");
    bool isDone = false;
    machine.loop.once(1s, [&] { isDone = machine.state().rep; });
    machine.advance(1s);
    EXPECT_TRUE(isDone);
}

TEST(IrcSession, ManyCommandsAtOnceLeaveTheProgramAnswerable) {
    HeardAtOnce machine;
    machine.types(100, "'ver");
    Nanoseconds asked{}, answered{};
    machine.loop.once(6s, [&] {
        asked = machine.loop.now();
        machine.server.say("PING :x");
    });
    machine.server.takes = [&](const std::string& line) {
        answered = line == "PONG x" ? machine.loop.now() : answered;
        return false;
    };
    machine.advance(60s);
    EXPECT_LT(answered - asked, 1s);
    EXPECT_GE(answered, asked);
}

TEST(IrcSession, AStoppedRecitalEndsWithinAFewLines) {
    IrcMachine machine;
    Lines songs;
    for (int song = 10; song < 40; ++song)
        songs.push_back("ride" + std::to_string(song) + ".mp3");
    machine.begin(songs);
    machine.typed("'play ride");
    std::string atStop;
    machine.loop.once(20s, [&] {
        atStop = machine.seen;
        press(machine.window("stops"), "label");
    });
    const std::string all = machine.typed("'yes", 60s);
    EXPECT_EQ(atStop.find("<b>20</b>"), std::string::npos); // by its own waits it would be there
    EXPECT_LE(std::ranges::count(all.substr(atStop.size()), '\n'), 1);
    EXPECT_TRUE(all.ends_with("selection scroll aborted\n"));
}

TEST(IrcSession, WhatWaitsIsNotSaidBehindTheOwnersBack) {
    IrcMachine machine;
    machine.begin();
    machine.seenOf([&] { machine.irc.join("#den"); }, 60s);
    const auto sayMuch = [&] {
        for (int line = 0; line < 8; ++line)
            machine.room.say("typed " + std::to_string(line));
        machine.irc.sendChatLine("said");
    };
    const std::string sent = machine.sentOf([&] { sayMuch(), machine.irc.leave(); }, 60s);
    EXPECT_EQ(sent.find("PRIVMSG", sent.find("PART #music")), sent.npos);
    EXPECT_NE(sent.find("typed 7\nPART"), sent.npos);
    EXPECT_EQ(machine.seenOf([&] {
        sayMuch();
        machine.seen.clear();
        machine.server.say(":bob!b@h KICK #den Owner :out");
    }),
              "- bob puts you out of #den: out\n- you have left #den\n"
              "- 3 lines of yours had not been sent yet, and won't be\n- you are in no room\n");
}

TEST(IrcSession, AFloodLeavesTheProgramAnswerable) {
    IrcMachine machine;
    machine.begin();
    std::string flood;
    for (int line = 0; line < 10'000; ++line)
        flood += ":n" + std::to_string(line) + "!x@y JOIN #music\r\n:ann!a@h PRIVMSG #music :" +
                 "\x02\x03"
                 "04,05 colours \x1b[2J 'volume 7\r\nPING :" +
                 std::to_string(line) + "\r\n";
    flood += ":ann!a@h PRIVMSG #music :" + std::string(1'000'000, 'x');
    machine.told(flood);
    EXPECT_EQ(machine.state().HScroll2, untouchedVolume);
    EXPECT_EQ(machine.typed("'volume 7"), "Owner: 'volume 7\nOwner: volume set:  <b>7</b>\n");
}

} // namespace
} // namespace larkspin
