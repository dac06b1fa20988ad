// The client that is a tree of windows as one of the owner's rooms: what is said there, who is
// obeyed, and what becomes of it when the client, or what reaches it, goes.
#include "host/window_room/window_room.h"

#include "app/program.h"
#include "irc/client/all_rooms.h"
#include "support/no_prompt.h"
#include "support/pretend_host.h"
#include "support/pretend_irc.h"
#include "support/pretend_session.h"
#include "support/shown_lines.h"

#include <gtest/gtest.h>

namespace larkspin {

namespace {

const std::string filter = "current media filter:  <b>mp3</b> (<b>*.mp3</b>)\n";

struct WindowRoomTest : testing::Test {
    WindowRoomTest() {
        host.talks = true;
        host.people = {"Owner", "Ann"};
        rooms.windows.reachBy(session);
        machine.host = &rooms.room;
        words.add(rooms.slashWords());
        machine.start();
    }
    void connect() {
        typed("/connect windows");
        shown.take();
    }
    // What the owner sees of what happens.
    std::string seenOf(const Task& happens, std::chrono::duration<double> span = 1s) {
        shown.take();
        machine.run(happens);
        machine.advance(span);
        return shown.take();
    }
    std::string typed(const std::string& line) {
        return seenOf([&] {
            if (SlashWords::isMeantForIt(line))
                words.run(line);
            else
                rooms.room.say(line);
        });
    }
    std::string heard(const std::string& speaker, const std::string& text) {
        return seenOf([&] { host.say(speaker, text); });
    }
    Conversation& front() { return rooms.conversations.front(); }

    VirtualMachine machine;
    PretendIrc server{machine.loop};
    NoPrompt prompt;
    PretendHost host{machine};
    PretendSession session{host, machine.loop};
    AllRooms rooms{machine.loop,    machine.lines,
                   lent({&server}), prompt,
                   machine.kept,    DataDirectory(machine.drive("data")),
                   "Login",         {}};
    ShownLines shown{rooms.conversations, "- "};
    SlashWords words{[this](const std::string& text) {
        rooms.conversations.tell(KeptLine::Kind::answer, text);
    }};
};

} // namespace

TEST_F(WindowRoomTest, ObeysTheOwnerThereAndNobodyElse) {
    host.say("Owner", "'filter?"); // long ago
    host.say("Ann", "hi");
    EXPECT_EQ(typed("/connect windows"), "- looking for the chat client's windows...\n"
                                         "- you are in Town Square\nOwner: 'filter?\n"
                                         "Ann: hi\n");
    EXPECT_EQ(front().firstUnread(), front().lines().size());
    EXPECT_EQ(front().name(), "Town Square");
    EXPECT_EQ(heard("Owner", "'filter?"), "Owner: 'filter?\nOwner: " + filter);
    for (const char* const line :
         {"'filter?", "x\nOwner:\t'filter?", "Owner:\t'filter?", "<b>'filter?"})
        EXPECT_EQ(heard("Ann", line).find("media filter"), std::string::npos) << line;
    host.addToText("Owner: 'filter?\r\n");
    EXPECT_EQ(heard("owner", "'filter?"), "- Owner: 'filter?\nowner: 'filter?\n");
    host.signOn("owner");
    EXPECT_EQ(heard("owner", "'filter?"), "owner: 'filter?\nowner: " + filter);
}

// In the log it would stand anew with each run.
TEST_F(WindowRoomTest, ShowsWhatIsThereAndWritesDownWhatIsSaidFromThen) {
    for (const char* const line : {"one", "two", "one"})
        host.say("Ann", line);
    typed("/log on");
    EXPECT_EQ(typed("/connect windows"),
              "- looking for the chat client's windows...\n"
              "- you are in Town Square\nAnn: one\nAnn: two\nAnn: one\n");
    heard("Ann", "three");
    machine.advance(60s);
    EXPECT_EQ(machine.dataFile("logs/windows/town%20square.2003-12.txt"),
              "2003-12-19 19:05  Ann: three\n");
}

TEST_F(WindowRoomTest, SaysWhatIsTypedHereThere) {
    connect();
    EXPECT_EQ(typed("hi <3"), "Owner: hi <3\n");
    EXPECT_EQ(typed("'filter?"), "Owner: 'filter?\nOwner: " + filter);
    const std::string text = host.text(host.first(host.room, "RICHCNTLREADONLY"));
    EXPECT_NE(text.find("Owner:\thi <3\r\nOwner:\t'filter?\r\nOwner:\t"), text.npos);
}

// A song's name may look like a command, and its line is seen without the tags in front.
TEST_F(WindowRoomTest, TakesNothingOfItsOwnForACommand) {
    connect();
    machine.otherPlayer.runs = true;
    machine.otherPlayer.caption = "'filter?";
    EXPECT_EQ(heard("Owner", "'amp"), "Owner: 'amp\nOwner: 'filter?\n");
    EXPECT_EQ(heard("Owner", "'filter?"), "Owner: 'filter?\nOwner: " + filter);
}

TEST_F(WindowRoomTest, GreetsThereWhenTheProgramBeginsAnew) {
    connect();
    EXPECT_NE(seenOf([&] { machine.program->restart(); }, 5s)
                  .find("Owner: larkspin player - by moraine\n"),
              std::string::npos);
}

TEST_F(WindowRoomTest, ShowsWhoIsThere) {
    connect();
    EXPECT_EQ(typed("/names"), "- Town Square, 2 people\n-   Owner\n-   Ann\n");
    std::string name; // none yet
    host.people.push_back("Bob");
    heard("Ann", "look who is here");
    EXPECT_EQ(rooms.room.people().count(), 3);
    std::swap(host.people.back(), name);
    machine.advance(10s);
    heard("Ann", "one of them can't be read");
    std::swap(host.people.back(), name);
    heard("Ann", "until now");
    EXPECT_EQ(rooms.room.people().row(2), "Bob");
    EXPECT_EQ(heard("Owner", "'x bob"), "Owner: 'x bob\nOwner: <b>Bob</b>, ignored bastard\n");
    EXPECT_EQ(host.ignored, Lines{"Bob"});
}

TEST_F(WindowRoomTest, FollowsTheClientThroughItsRooms) {
    connect();
    Conversation& square = front();
    EXPECT_EQ(seenOf([&] {
                  host[host.room].text = "Cellar";
                  host.addToText("OnlineHost:\tYou are in Cellar\r\n");
              }),
              "- the room is closed\n- you are in Cellar\nOnlineHost: You are in Cellar\n");
    EXPECT_EQ(front().name(), "Cellar");
    EXPECT_FALSE(square.isOpen);
    EXPECT_EQ(seenOf([&] {
                  host.remove(host.room);
                  machine.loop.post([&] { host.look(); });
              }),
              "- the room is closed\n");
    EXPECT_EQ(typed("still there?"), "- you are at home\nLogin: still there?\n");
    EXPECT_EQ(seenOf([&] {
                  host.room = host.addRoom();
                  host.look();
              }),
              "- you are in Town Square\n- the room is open again\n");
    EXPECT_EQ(&front(), &square);
}

// Somebody on a network may be called the same.
TEST_F(WindowRoomTest, TakesNoWordForANetworkWhereItIsInFront) {
    connect();
    const std::pair<const char*, const char*> words[] = {
        {"/msg Ann hi",
         "the chat client has no /msg: private messages are sent in the client itself"},
        {"/ignore Ann", "the chat client has no /ignore: 'x NAME ignores somebody"},
        {"/ignore", "you ignore nobody"},
        {"/topic", "the chat client has no /topic"},
        {"/me waves", "the chat client has no /me"},
        {"/topic #den", "you are on no network: /connect leads to one"},
    };
    for (const auto& [line, told] : words)
        EXPECT_EQ(typed(line), "- " + std::string(told) + '\n') << line;
    typed("/room 0");
    EXPECT_EQ(typed("/whisper Ann hi"), "- Ann whispers: hi\n");
}

TEST_F(WindowRoomTest, TellsOfAnAnswerThatTheClientDoesNotHear) {
    connect();
    for (const char* const note : {"'sn a", "'sn b", "'sn c"})
        heard("Owner", note);
    EXPECT_EQ(seenOf(
                  [&] {
                      host.say("Owner", "'scrn");
                      machine.loop.once(1s, [&] {
                          host.remove(host.frame);
                          host.look();
                      });
                  },
                  5s),
              "Owner: 'scrn\nOwner: scrolling <b>3</b> notes\nOwner: <b>1</b>.  a\n- the room is "
              "closed: the chat client has ended; its room is entered again as soon as it is back\n"
              "- part of an answer was not said in Town Square\n");
}

TEST_F(WindowRoomTest, TellsOfAClientThatHangsOrGoes) {
    connect();
    const auto hangs = [&](bool does) {
        return seenOf([&] {
            host.hangs = does;
            host.look();
        });
    };
    EXPECT_EQ(hangs(true), "- the chat client doesn't answer\n");
    EXPECT_EQ(typed("hello?"), "- not said: hello?\n");
    EXPECT_EQ(hangs(false), "- the chat client answers again\n");
    EXPECT_EQ(
        seenOf([&] { session.breakOff("the bridge has ended"); }),
        "- the chat client is reached no more: the bridge has ended; trying again in 5 seconds\n");
    machine.advance(10s);
    EXPECT_EQ(session.begun, 2);
    EXPECT_EQ(shown.take(), "- the room is open again\n");
    EXPECT_TRUE(front().isOpen);
    const auto isKept = [&] {
        session.end();
        rooms.takeUpAgain();
        machine.advance(1s);
        return session.state() == WindowSession::State::up;
    };
    EXPECT_TRUE(isKept());
    EXPECT_EQ(typed("/disconnect windows"), "- the room is closed\n"
                                            "- the chat client is left to itself\n");
    session.failure = "wine isn't installed";
    EXPECT_EQ(typed("/connect windows"),
              "- looking for the chat client's windows...\n"
              "- the chat client can't be reached: wine isn't installed\n");
    machine.advance(60s);
    EXPECT_EQ(session.begun, 4);
    EXPECT_FALSE(isKept());
}

TEST_F(WindowRoomTest, ReachesForNoneThatIsLeftAndTellsOfEachThatIsAskedFor) {
    connect();
    session.failure = "no display";
    session.breakOff("the bridge has ended");
    machine.advance(10s);
    EXPECT_EQ(typed("/connect windows"),
              "- looking for the chat client's windows...\n"
              "- the chat client is reached no more: no display; trying again in 5 seconds\n");
    rooms.windows.finish(); // and another run begins
    rooms.takeUpAgain();
    machine.advance(1s);
    typed("/disconnect windows");
    const int before = session.begun;
    rooms.takeUpAgain();
    machine.advance(1s);
    EXPECT_EQ(session.begun, before);
}

// The client turns to another room while the line is on its way.
TEST_F(WindowRoomTest, SaysNothingInAnotherRoom) {
    connect();
    EXPECT_EQ(seenOf(
                  [&] {
                      machine.loop.post([&] {
                          host[host.room].text = "Cellar";
                          host.look();
                      });
                      rooms.room.say("for those in the square");
                  },
                  20s),
              "- the room is closed\n- you are in Cellar\n"
              "- not said: for those in the square\n");
    EXPECT_EQ(host[host.first(host.room, "RICHCNTL")].text, "");
}

TEST_F(WindowRoomTest, SaysAgainWhatAClientThatHungHasntTaken) {
    connect();
    host.talks = false;
    const auto hangs = [&](bool does) {
        host.hangs = does;
        host.look();
    };
    machine.run([&] { rooms.room.sendChatLine("before"); });
    machine.advance(2s);
    machine.run([&] { rooms.room.sendChatLine("as it began"); });
    seenOf([&] { hangs(true); }, 3s);
    machine.run([&] { rooms.room.sendChatLine("<b>while"); });
    machine.run([&] { host.say("Owner", "as it began"); });
    host.talks = true;
    machine.loop.once(1s, [&] { rooms.room.sendChatLine("after"); });
    EXPECT_EQ(seenOf([&] { hangs(false); }, 20s),
              "- the chat client answers again\nOwner: as it began\nOwner: <b>while\nOwner: after\n"
              "- part of an answer was perhaps not said in Town Square\n");
}

// The client swallows it, or shows a long one in several.
TEST_F(WindowRoomTest, KnowsWhatItHasSaid) {
    connect();
    host.talks = false;
    EXPECT_EQ(typed("lost"), "");
    machine.advance(15s);
    EXPECT_EQ(shown.take(), "- perhaps not said in Town Square: lost\n");
    const std::string first(30, 'a'), rest = "'filter?";
    EXPECT_EQ(typed(first + rest), "");
    host.say("Owner", first);
    EXPECT_EQ(heard("Owner", rest), "Owner: " + first + rest + "\n");
    EXPECT_EQ(heard("Owner", rest), "Owner: 'filter?\n");
}

TEST_F(WindowRoomTest, DoesItsErrandsAndWatchesItsTransfersAlsoFromHome) {
    connect();
    typed("/room 0");
    EXPECT_EQ(typed("'kw music"), "Login: 'kw music\nLogin: goto keyword:  <b>music\n");
    EXPECT_EQ(host.keywords, Lines{"music"});
    host.showModal("File Transfer - 12%", {"Now Uploading ride.mp3", "About 5 minutes remaining"});
    EXPECT_EQ(seenOf([] {}, 3s), "");
    EXPECT_EQ(host.shown.back().second, 6);
    EXPECT_NE(host.text(host.first(host.room, "RICHCNTLREADONLY")).find("auto-upchat enabled"),
              std::string::npos);
}

} // namespace larkspin
