#include "library/playlist.h"
#include "library/playlist_row.h"
#include "support/talk.h"

#include <set>

namespace larkspin {

// Takes a song off the disk, and gives what is said about that.
static std::string gone(VirtualMachine& machine, const std::string& title) {
    std::filesystem::remove(machine.disk.path() / "music/rock" / title);
    return "not found, refresh the directory (" + machine.drive("music/rock") + "\\)";
}

TEST(ModeTick, RepeatsASongAndCountsEachTime) {
    VirtualMachine machine({"ride.wav"}, 10s);
    machine.writeDataFile("played.ini", "[times played]\r\nother.mp3=7\r\nRIDE.wav=many\r\n");
    machine.says({"'repeat", "'rnd"});
    const std::string again = "repeat:  ride (<b>.wav</b>)";
    EXPECT_EQ(machine.saidWithin(35s), (Lines{again, again, again}));
    EXPECT_EQ(machine.state().playtz, "played 3 times");
    EXPECT_EQ(machine.dataFile("played.ini"), "[times played]\r\nother.mp3=7\r\nride.wav=3\r\n");
}

TEST(ModeTick, ShufflesEverySongOncePerRound) {
    VirtualMachine machine({"1.mp3", "2.mp3", "3.mp3", "4.mp3"}, 9.9s);
    machine.says({"'shuffle", "'num 3"});
    for (int round = 1; round <= 4; ++round) {
        std::set<std::string> picked;
        for (int song = 0; song < 4; ++song) {
            const Lines said = machine.saidWithin(10s);
            const std::string title = machine.setting("play"), name = title.substr(0, 1);
            EXPECT_EQ(said, Lines{"random:  <b>" + name + "</b>.  " + name});
            EXPECT_EQ(machine.player.opened.back(), machine.drive("music/rock/" + title));
            picked.insert(title);
        }
        EXPECT_EQ(picked.size(), 4u);
    }
    EXPECT_EQ(machine.setting("played"), "16");
}

TEST(ModeTick, ContinuesThroughTheListForEver) {
    VirtualMachine machine({"a.mp3", "b.mp3", "c.wav"}, 9.9s);
    machine.says({"'num 2", "'cont"});
    for (int round = 0; round < 2; ++round)
        EXPECT_EQ(machine.saidWithin(30s), (Lines{"next:  <b>3</b>.  c (<b>.wav</b>)",
                                                  "next:  <b>1</b>.  a", "next:  <b>2</b>.  b"}));
    EXPECT_EQ(machine.dataFile("played.ini"),
              "[times played]\r\nb.mp3=2\r\nc.wav=2\r\na.mp3=2\r\n");
    EXPECT_EQ(machine.trayEntry("playtz"), "played 2 times") << "the count that is stored";
    const std::string complaint = gone(machine, "c.wav");
    EXPECT_EQ(machine.saidWithin(20s),
              (Lines{complaint, "next:  <b>1</b>.  a", "next:  <b>2</b>.  b"}));
    EXPECT_EQ(machine.state().resumeIndex, "1");
    machine.owner("'silent");
    machine.dialogs.boxes.clear();
    machine.advance(40s);
    EXPECT_EQ(machine.dialogs.boxes, Lines{}) << "none piles up while the owner is away";
}

TEST(ModeTick, PassesOverSongsThatAreGoneUntilNoneIsLeft) {
    for (const std::string mode : {"'repeat", "'shuffle", "'cont"}) {
        SCOPED_TRACE(mode);
        VirtualMachine machine({"a.mp3", "b.mp3", "c.mp3"}, 9.9s);
        machine.says({"'num 1", mode});
        gone(machine, "b.mp3");
        machine.advance(45s);
        EXPECT_EQ(machine.player.opened.size(), 5u);
        gone(machine, "a.mp3");
        const Lines complaint{gone(machine, "c.mp3")};
        EXPECT_EQ(machine.saidWithin(60s), complaint);
        machine.owner(mode == "'shuffle" ? "'soff" : mode + "off", 60s);
        EXPECT_EQ(machine.setting("played"), "5") << "the last one as well, and once";
    }
}

TEST(ModeTick, FallsSilentWhereADiskIsAway) {
    VirtualMachine machine({"a.mp3", "b.mp3", "c.mp3"}, 9.9s);
    machine.says({"'num 1", "'cont"});
    machine.slowDisk.spans[machine.drive("music/rock")] = SlowDisk::bound;
    EXPECT_EQ(machine.saidWithin(5min),
              Lines{"the disk doesn't answer:  <b>" + machine.drive("music/rock")});
    machine.slowDisk.spans.clear();
    std::string rows = machine.song("rock", "a.mp3", 9.9s) + "\r\n";
    Lines complaints;
    for (const std::string stick : {"s1", "s2", "s3", "s4", "s5", "s6"}) {
        rows += makerow("b " + stick, ".mp3", "c:\\" + stick) + "\r\n";
        complaints.push_back("not found, refresh the directory (c:\\" + stick + "\\)");
    }
    complaints.pop_back();
    machine.writeDataFile("temp.lst", rows);
    machine.start();
    machine.says({"'cont", "'num 1"});
    EXPECT_EQ(machine.saidWithin(60s), complaints);
}

TEST(ModeTick, IsPatientWithPausedAndUnplayableSongs) {
    for (const std::string mode : {"'repeat", "'shuffle", "'cont"}) {
        SCOPED_TRACE(mode);
        VirtualMachine machine({"a.mp3", "b.mp3"}, 10s);
        machine.player.lengths.erase(machine.drive("music/rock/b.mp3"));
        machine.says({mode, "'num 1", "'pause"});
        EXPECT_EQ(machine.saidWithin(60s), Lines{});
        machine.owner("'num 2", 1.9s);
        EXPECT_EQ(machine.player.opened.size(), 2u) << "two seconds to open";
        const auto said = machine.saidWithin(60s).size();
        EXPECT_GE(said, 5u);
        EXPECT_LE(said, 31u);
        // Only continuous play doesn't ask whether the list is empty.
        machine.says({"'num 1", "'pause"});
        clearPlaylist(machine.state());
        const Lines complaint = mode == "'cont" ? Lines{} : Lines{"no mp3s found, retard"};
        EXPECT_EQ(machine.saidWithin(60s), complaint);
        EXPECT_EQ(machine.state().Timer1.enabled(), complaint.empty());
    }
}

TEST(ModeTick, TellsWhyASongCouldntBePlayedAndGoesOn) {
    const std::string plain = "b can't be played", died = "b can't be played:  the player died";
    const std::tuple<std::string, std::string, std::string, Lines> cases[] = {
        {"", "", plain, {}},
        {"", "the player died", died, {}},
        {"'cont", "", plain, {"next:  <b>3</b>.  c"}},
        {"'repeat", "", plain, {"repeat:  b", "repeat:  b", "repeat:  b", "repeat:  b"}}};
    for (const auto& [mode, reason, told, expected] : cases) {
        SCOPED_TRACE(mode + reason);
        VirtualMachine machine({"a.mp3", "b.mp3", "c.mp3"}, 100s);
        machine.player.lengths.erase(machine.drive("music/rock/b.mp3"));
        machine.player.whyUnplayable = reason;
        if (!mode.empty())
            machine.owner(mode);
        machine.owner("'num 2", 1.9s);
        EXPECT_EQ(machine.saidWithin(7s), expected);
        EXPECT_EQ(machine.room.told, Lines{told});
        EXPECT_EQ(machine.dataFile("played.ini"), "") << "nor does it count";
        EXPECT_EQ(machine.setting("played"), "");
    }
}

// A song's name may look like an order, and what is said in the room comes back from there.
TEST(ModeTick, TellsThatInTheRoomWhereNobodyCanBeToldAlone) {
    VirtualMachine machine({"'volume 7.mp3"}, 100s);
    machine.player.lengths.clear();
    machine.room.tellsOwner = false;
    machine.owner("'num 1", 1.9s);
    EXPECT_EQ(machine.saidWithin(2s), Lines{"'volume 7 can't be played"});
    EXPECT_EQ(machine.setting("volume"), "");
}

TEST(ModeTick, CountsASongThatEndsWithoutAModeOnce) {
    VirtualMachine machine({"a.mp3", "b.mp3"}, 10s);
    machine.owner("'num 1", 9s);
    machine.owner("'next", 5s);
    machine.owner("'stop", 60s);
    EXPECT_EQ(machine.dataFile("played.ini"), "") << "neither left nor stopped songs count";
    machine.owner("'num 1", 60s);
    EXPECT_EQ(machine.dataFile("played.ini"), "[times played]\r\na.mp3=1\r\n");
    EXPECT_EQ(machine.state().playMark, "  l>");
    machine.owner("'play", 60s);
    machine.owner("'exit");
    machine.start();
    EXPECT_EQ(machine.said(), "load:  <b>2</b> - mp3s played:  <b>2</b>");
    EXPECT_EQ(machine.state().playtz, "played 2 times");
    machine.says({"'shuffle", "'num 1", "'clearpl"});
    EXPECT_EQ(machine.saidWithin(12s), Lines{"no mp3s found, retard"});
    EXPECT_EQ(machine.setting("played"), "3") << "though nothing follows";
}

// The owner's line comes in the middle of the tick's message.
TEST(ModeTick, CountsTheFinishedSongAlsoWhenItsSuccessorIsOvertaken) {
    for (const auto& [mode, message] :
         {std::pair("'repeat", "repeat:"), {"'shuffle", "random:"}, {"'cont", "next:"}}) {
        SCOPED_TRACE(mode);
        VirtualMachine machine({"a.mp3", "b.mp3", "c.mp3"}, 10s);
        machine.says({"'num 1", mode});
        machine.inMessage(message, [&] { machine.hear("'num 3"); });
        machine.advance(12s);
        EXPECT_EQ(machine.said(), "playing:  <b>3</b>.  c");
        EXPECT_EQ(machine.dataFile("played.ini"), "[times played]\r\na.mp3=1\r\n");
        EXPECT_EQ(machine.setting("played"), "1");
    }
}

// A slow disk, or a command that waits inside the pick.
TEST(ModeTick, CountsTheFinishedSongOnceHoweverLongThePickTakes) {
    VirtualMachine machine({"a.mp3", "b.mp3"}, 9.9s);
    machine.says({"'shuffle", "'num 1"});
    machine.advance(9.9s);
    machine.loop.once(100ms, [&] { machine.loop.waitUntil(machine.loop.now() + 2s); });
    machine.advance(3s);
    EXPECT_EQ(machine.dataFile("played.ini"), "[times played]\r\na.mp3=1\r\n");
    EXPECT_EQ(machine.setting("played"), "1");
}

// The mode is switched off in the song's own message, which outlasts it.
TEST(ModeTick, CountsASongThatEndsBeforeItsMessageOnce) {
    VirtualMachine machine({"a.mp3", "b.mp3"}, 2s);
    machine.says({"'cont", "'num 1"});
    machine.inMessage("next:", [&] {
        machine.owner("'contoff");
        machine.loop.waitUntil(machine.loop.now() + 5s);
    });
    machine.advance(15s);
    EXPECT_EQ(machine.dataFile("played.ini"), "[times played]\r\na.mp3=1\r\nb.mp3=1\r\n");
}

} // namespace larkspin
