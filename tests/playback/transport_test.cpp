#include "app/program.h"
#include "library/playlist_row.h"
#include "support/talk.h"

namespace larkspin {

TEST(Transport, StartsASongWithAllThatShowsIt) {
    VirtualMachine machine;
    machine.writeDataFile("larkspin.ini", "[lark]\r\nload=3\r\ntrigger='\r\nvolume=40\r\n");
    machine.writeDataFile("played.ini", "[times played]\r\nride.wav=4\r\n");
    machine.playlist({"Ride.WAV", "rest.MP3"});
    machine.start();
    EXPECT_EQ(machine.player.volume, -500);
    EXPECT_EQ(machine.answer("'num 2"), "playing:  <b>2</b>.  Ride (<b>.wav</b>)");
    EXPECT_EQ(machine.setting("play"), "Ride.WAV");
    EXPECT_EQ(machine.setting("playpath"), machine.drive("music/rock"));
    EXPECT_EQ(machine.trayEntry("playtz"), "played 5 times");
    EXPECT_EQ(machine.state().playMark, playingMark);
    EXPECT_EQ(machine.dataFile("played.ini"), "[times played]\r\nride.wav=4\r\n");
    EXPECT_EQ(machine.player.volume, -1800);
    machine.player.setVolume(0);
    converse(machine,
             {Turn("'play", "playing temp:  Ride"), Turn("'shuffle", "shuffled play - <b>on"),
              Turn("'next", "next:  <b>1</b>.  rest"),
              Turn("'pre", "previous:  <b>2</b>.  Ride (<b>.wav</b>)")});
    const std::string ride = machine.drive("music/rock/Ride.WAV");
    EXPECT_EQ(machine.player.opened,
              (Lines{ride, ride, machine.drive("music/rock/rest.MP3"), ride}));
    EXPECT_EQ(machine.player.volume, -1800);
}

TEST(Transport, LeavesASongAloneWhenTheNextOneIsGone) {
    VirtualMachine machine, empty(Lines{});
    converse(empty, {Turn({"'next", "'pre"}, "not found, refresh the directory (\\)")});
    machine.writeDataFile("temp.lst", machine.song("rock", "a.mp3") + "\r\n" +
                                          makerow("b", ".mp3", "c:\\no\\dir") + "\r\n" +
                                          makerow("no such song", ".mp3", "c:\\") + "\r\n");
    machine.start();
    converse(
        machine,
        {Turn("'cont", "continuous play - <b>on"), Turn("'num 1", "playing:  <b>1</b>.  a"),
         Turn({"'next", "'play b", "'rnd b"}, "not found, refresh the directory (c:\\no\\dir\\)"),
         Turn({"'next", "'num 3"}, "not found, refresh the directory (c:\\)", 60s)});
    EXPECT_EQ(machine.player.PlayState(), PlayState::playing);
    EXPECT_FALSE(machine.state().Timer1.enabled());
    machine.owner("'silent");
    converse(machine, {Turn({"'num 2", "'play b"},
                            "[box] not found, refresh the directory (c:\\no\\dir\\)")});
    // The song last started says it in a form of its own.
    for (const std::string directory : {"c:\\no\\dir", "c:\\"}) {
        machine.writeDataFile(
            "larkspin.ini", "[lark]\nload=2\ntrigger='\nplay=b.mp3\nplaypath=" + directory + "\n");
        machine.start();
        EXPECT_EQ(machine.answer("'play"), "not found, refresh the directory (" + directory + ")");
    }
}

TEST(Transport, ADiskThatTakesItsTimeHoldsOnlyItsOwnSongUp) {
    VirtualMachine machine;
    machine.writeDataFile("temp.lst", machine.song("nas", "a.mp3") + "\r\n" +
                                          machine.song("rock", "b.mp3") + "\r\n" +
                                          machine.song("rock", "c.mp3") + "\r\n");
    machine.start();
    const std::string nas = machine.drive("music/nas"), b = machine.drive("music/rock/b.mp3");
    const std::string unanswered = "the disk doesn't answer:  <b>" + nas, other = "'num 3",
                      none = "";
    for (const auto& [span, meanwhile, answer, playing] : std::vector<
             std::tuple<std::chrono::duration<double>, std::string, std::string, std::string>>{
             {3s, none, "playing:  <b>1</b>.  a", nas + "\\a.mp3"},
             {1min, none, unanswered, b},
             {1min, other, "playing:  <b>3</b>.  c", machine.drive("music/rock/c.mp3")},
             {3s, other, "playing:  <b>3</b>.  c", machine.drive("music/rock/c.mp3")},
             {3s, "'stop", "larkspin player [stopped]", b}}) {
        SCOPED_TRACE(meanwhile + " " + std::to_string(span.count()));
        machine.owner("'num 2");
        machine.slowDisk.spans[nas] = span;
        machine.loop.once(1s, [&, line = meanwhile] {
            if (!line.empty())
                machine.hear(line);
        });
        EXPECT_EQ(machine.answerTo([&] { machine.owner("'num 1", 11s); }), answer);
        EXPECT_EQ(machine.player.FileName(), playing);
    }
    machine.loop.once(1s, [&] { machine.hear("'count c"); });
    machine.owner("'num 1", 5s);
    EXPECT_EQ(machine.answer("'next"), "next:  <b>2</b>.  b") << "the one after it";
    machine.owner("'silent");
    machine.slowDisk.spans[nas] = 1min;
    EXPECT_EQ(machine.answerTo([&] { machine.owner("'num 1", 11s); }),
              "[box] the disk doesn't answer:  " + nas);
}

TEST(Transport, PausesAndGoesOnInEveryState) {
    VirtualMachine machine({"a.mp3", "c.mp3"}, 100s);
    const std::string pauseWhat = "wtf are you gonna pause?",
                      resumeWhat = "wtf are you gonna resume?",
                      already = "already playing something you dick";
    converse(machine,
             {Turn("'pause", pauseWhat), Turn("'resume", resumeWhat),
              Turn("'pre", "previous:  <b>2</b>.  c", 90s), Turn("'resume", already),
              Turn("'pause", "paused:  c", 1h), Turn("'pause", "already paused you dumbass"),
              Turn("'resume", "resumed:  c", 9s), Turn("'pause", "paused:  c"),
              Turn({"'stop", "'stop"}, "larkspin player [stopped]"), Turn("'resume", resumeWhat),
              Turn("'play", "playing temp:  c"), Turn("'pause", "paused:  c"),
              Turn("'next", "next:  <b>1</b>.  a"), Turn("'resume", already, 101s),
              Turn("'pause", pauseWhat)});
    EXPECT_EQ(machine.setting("played"), "1") << "only one of these has come to its end";
}

TEST(Transport, SwitchesModes) {
    VirtualMachine machine({"a.mp3"}, 10s);
    const Lines cases[] = {{"'repeat", "repeat - <b>on", "r---"}, // modes, mode tick
                           {"'next", "next:  <b>1</b>.  a", "r--t"},
                           {"'shuffle", "shuffled play - <b>on", "-s-t"},
                           {"'repeatoff", "repeat not on, genius", "-s-t"},
                           {"'cont", "continuous play - <b>on", "--ct"},
                           {"'stop", "larkspin player [stopped]", "--c-"},
                           {"'shuffle", "shuffled play - <b>on", "-s--"},
                           {"'contoff", "continuous play not on, genius", "-s--"},
                           {"'play", "playing temp:  a", "-s-t"},
                           {"'soff", "shuffled play - <b>off", "----"}};
    const AppState& state = machine.state();
    for (const Lines& c : cases) {
        EXPECT_EQ(machine.answer(c[0]), c[1]);
        EXPECT_EQ(c[2], std::string(state.rep ? "r" : "-") + (state.crand ? "s" : "-") +
                            (state.cintz ? "c" : "-") + (state.Timer1.enabled() ? "t" : "-"))
            << c[0];
    }
    machine.advance(12s);
    EXPECT_EQ(machine.setting("played"), "1") << "the song goes on to its end and counts";
}

// Both lines are there before the first one's message is said.
TEST(Transport, AStartOvertakenInItsMessageLeavesTheLaterOneAlone) {
    const char* const cases[][3] = {{"'num 1", "'num 2", "paused:  b"},
                                    {"'play a", "'rnd b", "paused:  b"},
                                    {"'next", "'pre", "paused:  c"},
                                    {"'num 1", "'stop", "wtf are you gonna pause?"}};
    for (const auto& [first, second, paused] : cases) {
        SCOPED_TRACE(std::string(first) + second);
        VirtualMachine machine({"a.mp3", "b.mp3", "c.mp3"}, 10s);
        machine.run([&, one = first, other = second] {
            machine.loop.post([&] { machine.hear(one); });
            machine.loop.post([&] { machine.hear(other); });
            machine.loop.serveTurn();
        });
        EXPECT_EQ(machine.answer("'pause"), paused);
        const bool started = *paused == 'p';
        EXPECT_EQ(machine.state().playMark == playingMark, started);
        machine.owner("'resume", 20s);
        EXPECT_EQ(machine.setting("played"), started ? "1" : "");
    }
}

// What comes in while a random start picks its song, or while it says its message, wins, and
// nothing stays of that start but which song was opened last.
TEST(Transport, AnOvertakenRandomStartLeavesNothingBehind) {
    for (const std::string first : {"'rnd", "'rnd b", ""}) { // none: the shuffle's own start
        for (const bool inMessage : {false, true}) {
            for (const std::string second : {"'stop", "'num 3"}) {
                SCOPED_TRACE(first + second + (inMessage ? " in the message" : ""));
                VirtualMachine machine({"a.mp3", "b.mp3", "c.mp3"}, 9.9s);
                machine.owner("'shuffle");
                machine.owner("'num 1", first.empty() ? 9.9s : 0s);
                const auto overtake = [&] { machine.hear(second); };
                if (inMessage)
                    machine.inMessage("random:", overtake);
                else if (first.empty())
                    machine.loop.once(100ms, overtake); // due when the tick is at its pick
                machine.run([&] {
                    if (!first.empty())
                        machine.loop.post([&] { machine.hear(first); });
                    if (!inMessage && !first.empty())
                        machine.loop.post(overtake);
                    machine.loop.waitUntil(machine.loop.now() + 100ms);
                });
                const bool plays = second == "'num 3";
                EXPECT_TRUE(machine.player.opened.back().ends_with(machine.setting("play")));
                EXPECT_EQ(machine.player.PlayState() == PlayState::playing, plays);
                EXPECT_EQ(machine.state().playMark == playingMark, plays);
                EXPECT_EQ(machine.state().Timer1.enabled(), plays);
                if (plays)
                    EXPECT_EQ(machine.answer("'next"), "next:  <b>1</b>.  a");
            }
        }
    }
}

TEST(Transport, AStartThatFailsInsideAnotherOnesMessageDoesntOvertakeIt) {
    VirtualMachine machine({"a.mp3", "b.mp3"}, 10s);
    std::filesystem::remove(machine.disk.path() / "music/rock/b.mp3");
    machine.owner("'cont");
    machine.inMessage("playing:", [&] { machine.hear("'num 2"); });
    machine.owner("'num 1");
    EXPECT_EQ(machine.setting("play"), "a.mp3");
    EXPECT_EQ(machine.state().playMark, playingMark);
    EXPECT_TRUE(machine.state().Timer1.enabled());
}

TEST(Transport, WhatComesInAPausesMessageLeavesNoMarkOfIt) {
    for (const char* line : {"'stop", "'next"}) {
        SCOPED_TRACE(line);
        VirtualMachine machine({"a.mp3", "b.mp3"});
        machine.owner("'num 1");
        machine.inMessage("paused:", [&, line] { machine.hear(line); });
        machine.owner("'pause");
        EXPECT_EQ(machine.state().pauseMark, unpausedMark);
        EXPECT_NE(machine.player.PlayState(), PlayState::paused);
    }
}

TEST(Transport, TheProgramsEndInsideARandomStartKeepsTheSongLastStarted) {
    VirtualMachine machine({"a.mp3", "b.mp3"});
    machine.owner("'num 1");
    machine.run([&] {
        machine.loop.post([&] { machine.hear("'rnd"); });
        machine.loop.post([&] { machine.program->end(); });
        machine.loop.serveTurn();
    });
    EXPECT_EQ(machine.setting("play"), "a.mp3");
}

// The song that goes on is the one that is told, counted and kept.
TEST(Transport, ARandomStartOfAFileThatHasGoneLeavesNothingBehind) {
    for (const std::string start : {"'rnd", "'rnd b", "button"}) {
        SCOPED_TRACE(start);
        VirtualMachine machine({"a.mp3", "b.mp3"}, 10s);
        std::filesystem::remove(machine.disk.path() / "music/rock/b.mp3");
        machine.says({"'shuffle", "'num 1"});
        machine.state().playedMemory.add("a.mp3");
        machine.state().pickHits = "0";
        EXPECT_EQ(machine.answerTo([&] {
            start == "button" ? machine.click("mp3s", "nextButton") : machine.owner(start);
        }),
                  "not found, refresh the directory (" + machine.drive("music/rock") + "\\)");
        EXPECT_EQ(machine.answer("'info"), "song:  a");
        EXPECT_EQ(machine.setting("play"), "a.mp3");
        EXPECT_EQ(machine.state().choiceList.row(0), "a.mp3");
        machine.owner("'soff", 12s);
        EXPECT_EQ(machine.dataFile("played.ini"), "[times played]\r\na.mp3=1\r\n");
        machine.restart();
        EXPECT_EQ(machine.answer("'play"), "playing temp:  a");
    }
}

} // namespace larkspin
