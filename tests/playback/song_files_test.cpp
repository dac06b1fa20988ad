// Songs deleted and renamed on disk, by the owner's lines and hands.
#include "library/playlist_row.h"
#include "shell/control_events.h"
#include "support/talk.h"

#include <algorithm>
#include <filesystem>

namespace larkspin {

namespace {

const std::string unwilling = "the disk wont let go of it, the file is still there";
const std::string noSong = "what the fuck are you gonna delete, stupid?";

std::string stillCalled(const std::string& title) {
    return "the disk wont have that name, the file is still called " + title;
}

// On a playlist of a.mp3, played twice, b.mp3, played four times, and c.wav, in the directory rock.
struct SongFiles : testing::Test {
    SongFiles() {
        machine.writeDataFile("larkspin.ini", "[lark]\r\nload=2\r\ntrigger='\r\n");
        machine.writeDataFile("played.ini", "[times played]\r\na.mp3=2\r\nb.mp3=4\r\n");
        machine.playlist({"a.mp3", "b.mp3", "c.wav"});
        machine.start();
        machine.window("mp3s").visible = true;
    }

    // On a row of the list, with the answer to the question that comes.
    void strikeDelete(int row, const std::string& answer) {
        answerNext(row, answer);
        machine.run([&] { pressKey(machine.window("mp3s"), "playlistView", Key::del); });
    }
    void clickRename(int row, const std::string& answer) {
        answerNext(row, answer);
        machine.click("mp3s", "renameLabel");
    }
    void answerNext(int row, const std::string& answer) {
        press(machine.window("mp3s"), "playlistView", row);
        machine.forget();
        machine.dialogs.answers = {answer};
    }
    // While the player lets go of its song, or while a question is open.
    void hearInBetween(const Lines& lines) {
        const auto hear = [this, lines] {
            for (const std::string& line : lines)
                machine.hear(line);
        };
        machine.player.closing = 2s;
        machine.loop.once(1s, hear);
        machine.dialogs.whileOpen = hear;
    }
    // The rows as "title directory", the directory as spelled below that of all music.
    Lines rows() {
        Lines found;
        const AppState& state = machine.state();
        for (int index = 0; index < state.masterList.count(); ++index) {
            const Song song = songOfRow(state.masterList.row(index));
            found.push_back(song.title() + ' ' +
                            song.directory.substr(machine.drive("music").size() + 1));
            EXPECT_EQ(state.masterList.row(index), state.playlistView.row(index));
        }
        EXPECT_EQ(state.playlistView.count(), state.masterList.count());
        return found;
    }
    Lines files(const std::string& directory = "music/rock") {
        Lines names;
        for (const auto& entry :
             std::filesystem::directory_iterator(machine.disk.path() / directory))
            names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        return names;
    }
    std::string counts() { return machine.dataFile("played.ini").substr(16); }

    VirtualMachine machine;
};

} // namespace

TEST_F(SongFiles, DeletePutsTheSongInPlayIntoTheWastebasket) {
    EXPECT_EQ(machine.answer("'delete"), noSong);
    machine.owner("'cont");
    machine.owner("'num 2");
    EXPECT_EQ(machine.answer("'delete"), "deleted:  <b>b</b> ");
    EXPECT_EQ(machine.saidWithin(400s), Lines{}) << "nothing follows";
    EXPECT_EQ(machine.player.PlayState(), PlayState::closed);
    EXPECT_EQ(machine.disk.read("share/Trash/files/b.mp3"), "sound");
    EXPECT_EQ(files(), (Lines{"a.mp3", "c.wav"}));
    EXPECT_EQ(rows(), (Lines{"a.mp3 rock", "c.wav rock"}));
    EXPECT_EQ(counts(), "a.mp3=2\r\n");
    EXPECT_EQ(machine.trayEntry("mp3z"), "view 2 files");
    EXPECT_EQ(machine.state().masterIndex(), 1) << "the row behind it";
    converse(machine, {Turn("'delete", noSong), Turn("'play", "nothing to play, fag"),
                       Turn("'num 2", "playing:  <b>2</b>.  c (<b>.wav</b>)"),
                       Turn("'delete", "deleted:  <b>c</b>  (<b>.wav</b>)")});
    EXPECT_EQ(machine.state().masterIndex(), -1) << "it was the last row";
}

TEST_F(SongFiles, DeleteTakesTheRowLastStartedWhicheverItIsByNow) {
    machine.owner("'num 2");
    machine.owner("'listrmv a  ");
    EXPECT_EQ(machine.answer("'delete"), "deleted:  <b>b</b> ");
    EXPECT_EQ(rows(), Lines{"b.mp3 rock"});
    EXPECT_EQ(files(), (Lines{"a.mp3", "c.wav"}));
    machine.owner("'play "); // a question is open, with no song in play
    EXPECT_EQ(machine.answer("'delete"), noSong);
    EXPECT_EQ(rows(), Lines{"b.mp3 rock"});
}

TEST_F(SongFiles, AreKnownByTheirTextBeforeAnyRowHasBeenStarted) {
    machine.owner("'num 2");
    machine.restart();
    converse(machine, {Turn("'delete", noSong), Turn("'play", "playing temp:  b"),
                       Turn("'rename d", "rename current song to:  <b>d")});
    EXPECT_EQ(rows(), (Lines{"a.mp3 rock", "c.wav rock", "d.mp3 rock\\"}));
}

TEST_F(SongFiles, RenameCarriesRowAndCountAlong) {
    EXPECT_EQ(machine.answer("'rename x"), "what the fuck are you gonna rename, stupid?");
    machine.owner("'num 2");
    EXPECT_EQ(machine.answer("'rename Me.mp3"), "rename current song to:  <b>Me.mp3");
    EXPECT_EQ(machine.player.PlayState(), PlayState::closed);
    EXPECT_EQ(rows(), (Lines{"a.mp3 rock", "c.wav rock", "Me.mp3.mp3 rock\\"}));
    EXPECT_EQ(counts(), "a.mp3=2\r\nMe.mp3.mp3=4\r\n");
    EXPECT_EQ(machine.state().masterIndex(), -1);
    EXPECT_EQ(machine.answer("'play"), "playing temp:  Me.mp3");
    for (const char* line : {"'num 3", "'rename z", "'num 2", "'rename C"})
        machine.owner(line);
    EXPECT_EQ(rows(), (Lines{"a.mp3 rock", "C.wav rock\\", "z.mp3 rock\\\\"}));
    EXPECT_EQ(files(), (Lines{"C.wav", "a.mp3", "z.mp3"}));
    EXPECT_EQ(counts(), "a.mp3=2\r\nz.mp3=4\r\n") << "a song never played has none";
}

TEST_F(SongFiles, RenameRefusesWhatIsNoNewName) {
    machine.owner("'num 2");
    for (const std::string& name :
         Lines{"", " x", "a/b", "..\\b", "a:b", "a<b", "a>b", "a|b", "b", "a\tb", "a\nb", "a\x7F"})
        EXPECT_EQ(machine.answer("'rename " + name), "that wont work dumbass") << name;
    EXPECT_EQ(machine.player.PlayState(), PlayState::playing);
    EXPECT_EQ(files(), (Lines{"a.mp3", "b.mp3", "c.wav"}));
}

TEST_F(SongFiles, RenameKeepsToItsDirectoryAndOverNothing) {
    machine.disk.write("music/rock/A.mp3", "other");
    const std::string longName(300, 'x');
    for (const auto& [name, onDisk] :
         std::map<std::string, std::string>{{"..", "...mp3"},
                                            {"x\uF00Ay\uF05C", "x\ny\\.mp3"},
                                            {"..\uF02Fa", "..\uF02Fa.mp3"},
                                            {"B", "B.mp3"},
                                            {"a", "b.mp3"},
                                            {"A", "b.mp3"},
                                            {longName, "b.mp3"}}) {
        SCOPED_TRACE(name);
        machine.disk.write("music/rock/b.mp3", "mine");
        machine.writeDataFile("temp.lst", makerow("b", ".mp3", machine.drive("music/rock")));
        machine.start();
        machine.owner("'num 1");
        EXPECT_EQ(machine.answer("'rename " + name),
                  "rename current song to:  <b>" + name +
                      (onDisk == "b.mp3" ? '\n' + stillCalled("b.mp3") : ""));
        EXPECT_EQ(rows(), Lines{name + ".mp3 rock\\"});
        EXPECT_EQ(machine.disk.read("music/rock/" + onDisk), "mine");
        std::filesystem::remove(machine.disk.path() / "music/rock" / onDisk);
    }
    EXPECT_EQ(files(), (Lines{"A.mp3", "a.mp3", "c.wav"}));
    EXPECT_EQ(files("music"), Lines{"rock"});
    EXPECT_EQ(machine.disk.read("music/rock/a.mp3"), "sound");
}

TEST_F(SongFiles, SilentModeAnswersInBoxes) {
    machine.state().silnt = true;
    converse(machine, {Turn("'delete", "[box] " + noSong), Turn("'num 3", ""),
                       Turn("'rename c", ""), Turn("'rename d", "[box] renamed c.wav to d.mp3"),
                       Turn("'delete", "[box] deleted d.wav")});
    EXPECT_EQ(machine.disk.read("share/Trash/files/d.wav"), "sound");
    machine.files.refusesMoves = true;
    machine.owner("'num 1");
    EXPECT_EQ(machine.answer("'delete"), "[box] deleted a.mp3\n[box] " + unwilling);
}

TEST_F(SongFiles, TellWhenTheDiskRefuses) {
    machine.files.refusesMoves = true;
    converse(machine, {Turn("'num 2", "playing:  <b>2</b>.  b"),
                       Turn("'rename d", "rename current song to:  <b>d\n" + stillCalled("b.mp3")),
                       Turn("'num 1", "playing:  <b>1</b>.  a"),
                       Turn("'delete", "deleted:  <b>a</b> \n" + unwilling)});
    EXPECT_EQ(rows(), (Lines{"c.wav rock", "d.mp3 rock\\"}));
    EXPECT_EQ(files(), (Lines{"a.mp3", "b.mp3", "c.wav"}));
    EXPECT_EQ(counts(), "d.mp3=4\r\n");
}

TEST_F(SongFiles, WaitFiveSecondsAtMostForThePlayer) {
    machine.player.closing = 1h;
    machine.player.lengths[""] = 1; // as if what is stopped meanwhile had come to its end
    machine.owner("'num 2");
    const auto before = machine.loop.now();
    EXPECT_EQ(machine.answer("'delete"), "deleted:  <b>b</b> ");
    EXPECT_EQ(std::chrono::round<std::chrono::seconds>(machine.loop.now() - before), 5s);
    EXPECT_EQ(files(), (Lines{"a.mp3", "c.wav"}));
    EXPECT_EQ(machine.setting("played"), "") << "left before its end";
}

TEST_F(SongFiles, ASongStartedWhileThePlayerLetsGoPlaysOn) {
    for (const std::string& command : Lines{"'delete", "'rename d"}) {
        machine.playlist({"a.mp3", "b.mp3", "c.wav"});
        machine.start();
        machine.owner("'num 2");
        hearInBetween({"'delete", "'listrmv a   ", "'next"});
        EXPECT_TRUE(machine.answer(command).starts_with(noSong)) << "one at a time";
        EXPECT_TRUE(machine.said().starts_with(command.substr(1, 6)));
        EXPECT_EQ(machine.player.PlayState(), PlayState::playing);
        EXPECT_EQ(machine.state().choiceList.row(0), "c.wav");
        EXPECT_EQ(rows().front(), "c.wav rock") << "the right row has gone";
        EXPECT_EQ(machine.state().masterIndex(), 0);
    }
    EXPECT_EQ(files(), (Lines{"a.mp3", "c.wav", "d.mp3"}));
}

TEST_F(SongFiles, AChoiceOpenedWhileThePlayerLetsGoStaysOpen) {
    machine.owner("'num 2");
    hearInBetween({"'play "});
    machine.owner("'rename d");
    EXPECT_EQ(machine.state().choiceList.count(), 3);
}

TEST_F(SongFiles, TheDeleteKeyAsksFirst) {
    strikeDelete(noRow, "yes");
    EXPECT_EQ(machine.lastBox(), "") << "no row is current";
    machine.owner("'num 1");
    strikeDelete(1, "no");
    EXPECT_EQ(machine.lastBox(), "do you really wanna delete b?");
    EXPECT_EQ(files(), (Lines{"a.mp3", "b.mp3", "c.wav"}));
    strikeDelete(1, "yes");
    EXPECT_EQ(machine.allSaid(), Lines{});
    EXPECT_EQ(machine.disk.read("share/Trash/files/b.mp3"), "sound");
    EXPECT_EQ(rows(), (Lines{"a.mp3 rock", "c.wav rock"}));
    EXPECT_EQ(counts(), "a.mp3=2\r\n");
    EXPECT_EQ(machine.player.PlayState(), PlayState::playing);
    machine.files.refusesMoves = true;
    strikeDelete(0, "yes");
    EXPECT_EQ(machine.lastBox(), unwilling);
    EXPECT_EQ(machine.player.PlayState(), PlayState::closed) << "it was the song in play";
    EXPECT_EQ(machine.state().masterIndex(), 0);
}

TEST_F(SongFiles, TheRenameLabelWorksOnAnyRow) {
    machine.owner("'num 1");
    for (const std::string& name : Lines{"", "b", "x/y", " x"}) {
        clickRename(1, name);
        EXPECT_EQ(machine.dialogs.boxes,
                  Lines{"what would you like to rename b as?(.mp3 is already provided)"});
    }
    EXPECT_EQ(files(), (Lines{"a.mp3", "b.mp3", "c.wav"}));
    machine.state().playedMemory.add("c.wav");
    clickRename(1, "d");
    EXPECT_EQ(machine.dialogs.titles.back(), "file renamer");
    EXPECT_EQ(machine.allSaid(), Lines{});
    EXPECT_EQ(files(), (Lines{"a.mp3", "c.wav", "d.mp3"}));
    EXPECT_EQ(rows(), (Lines{"a.mp3 rock", "c.wav rock", "d.mp3 rock\\"}));
    EXPECT_TRUE(machine.state().playedMemory.empty());
    EXPECT_EQ(machine.player.PlayState(), PlayState::playing);
    clickRename(0, "d"); // the song in play, to a name that is taken
    EXPECT_EQ(machine.lastBox(), stillCalled("a.mp3"));
    EXPECT_EQ(machine.player.PlayState(), PlayState::closed);
}

TEST_F(SongFiles, WhatTheOwnerWasAskedAboutIsFoundAgain) {
    hearInBetween({"'listrmv a    "});
    strikeDelete(1, "yes");
    EXPECT_EQ(files(), (Lines{"a.mp3", "c.wav"}));
    EXPECT_EQ(rows(), Lines{"c.wav rock"});
    hearInBetween({"'listrmv "});
    clickRename(0, "d");
    EXPECT_EQ(files(), (Lines{"a.mp3", "d.wav"}));
    EXPECT_EQ(rows(), Lines{}) << "the list that has taken its place stays as it is";
}

} // namespace larkspin
