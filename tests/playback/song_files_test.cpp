// Songs deleted and renamed on disk, by the owner's lines and hands.
#include "library/playlist_row.h"
#include "shell/control_events.h"
#include "support/talk.h"
#include "text/stand_ins.h"

#include <algorithm>
#include <filesystem>

namespace larkspin {

static const std::string noSong = "what the fuck are you gonna delete, stupid?";
static const std::string refused = ":  permission denied";

// On a playlist of a.mp3, played twice, b.mp3, played four times, and c.wav, in the directory rock.
struct SongFilesTest : testing::Test {
    SongFilesTest() {
        machine.writeDataFile("larkspin.ini", "[lark]\r\nload=2\r\ntrigger='\r\n");
        machine.writeDataFile("played.ini", "[times played]\r\na.mp3=2\r\nb.mp3=4\r\n");
        startAnew();
    }

    // With more rows in its playlist.
    void startAnew(const std::string& more = {}) {
        machine.playlist({"a.mp3", "b.mp3", "c.wav"});
        startOn(machine.dataFile("temp.lst") + more);
    }
    void startOn(const std::string& playlist) {
        machine.writeDataFile("temp.lst", playlist);
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
        Lines found = rowsOf(machine.state().masterList);
        EXPECT_EQ(rowsOf(machine.state().playlistView), found);
        for (std::string& row : found) {
            const Song song = songOfRow(row);
            row = song.title() + ' ' + song.directory.substr(machine.drive("music").size() + 1);
        }
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

TEST_F(SongFilesTest, DeletePutsTheSongInPlayIntoTheWastebasket) {
    EXPECT_EQ(machine.answer("'delete"), noSong);
    machine.says({"'cont", "'num 2", "'pause"});
    machine.state().playedMemory.add("a.mp3");
    machine.player.closing = 3s;
    EXPECT_EQ(machine.answer("'delete"), "deleted:  <b>b</b> ");
    EXPECT_TRUE(machine.state().playedMemory.empty());
    EXPECT_EQ(machine.setting("play"), "") << "also for a run after a crash";
    EXPECT_EQ(machine.state().pauseMark, unpausedMark);
    EXPECT_EQ(machine.saidWithin(400s), Lines{}) << "nothing follows";
    EXPECT_EQ(machine.player.PlayState(), PlayState::closed);
    EXPECT_EQ(machine.disk.read("share/Trash/files/b.mp3"), "sound");
    EXPECT_EQ(files(), (Lines{"a.mp3", "c.wav"}));
    EXPECT_EQ(rows(), (Lines{"a.mp3 rock", "c.wav rock"}));
    EXPECT_EQ(counts(), "a.mp3=2\r\n");
    EXPECT_EQ(machine.trayEntry("mp3z"), "view 2 files");
    EXPECT_EQ(machine.state().masterIndex(), 1) << "the row after it";
    converse(machine, {Turn("'delete", noSong), Turn("'play", "nothing to play, fag"),
                       Turn("'num 2", "playing:  <b>2</b>.  c (<b>.wav</b>)"),
                       Turn("'delete", "deleted:  <b>c</b>  (<b>.wav</b>)")});
    EXPECT_EQ(machine.state().masterIndex(), -1) << "it was the last row";
    converse(machine,
             {Turn("'rnd", "random:  <b>1</b>.  a"), Turn("'delete", "deleted:  <b>a</b> ")});
}

// What the owner does before he deletes b.mp3, and what is left of the list then, whichever row
// stands where b.mp3 was started.
TEST_F(SongFilesTest, TheRowThatGoesIsThatOfTheSongInPlay) {
    const std::string rock = machine.drive("music/rock"), pop = machine.song("pop", "b.mp3");
    const std::string doubled = makerow("b", ".mp3", rock + "\\\\");
    machine.song("aaa", "aaa.mp3");
    struct Case {
        Lines lines, rows = {"a.mp3 rock", "c.wav rock"};
        std::string more = {}; // in the playlist
    };
    const Case cases[] = {
        {{"'num 1", "'play ", "'yes", "'m 2"}},
        {{"'num 3", "'play ", "'yes", "'m 2"}},
        {{"'num 2", "'scan " + machine.drive("music/aaa"), "'transfer"},
         {"a.mp3 rock", "aaa.mp3 aaa", "c.wav rock"}},
        {{"'num 2", "'listrmv a.mp3", "'listrmv a  "}, {"c.wav rock"}},
        {{"'num 2", "'listrmv b  "}},
        {{"'num 2", "'clearpl"}, {}},
        {{"'num 3", "restart", "'play"}, {"a.mp3 rock", "b.mp3 pop", "c.wav rock"}, pop},
        {{"'num 3", "restart", "'play"},
         {"a.mp3 rock", "ab.mp3 rock", "b.mp3 rock2", "c.wav rock"},
         makerow("ab", ".mp3", rock) + "\r\n" + makerow("b", ".mp3", rock + "2")},
        {{"'num 2"}, {"a.mp3 rock", "c.wav rock"}, doubled},
        {{"'num 3"}, {"a.mp3 rock", "c.wav rock"}, doubled},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.lines.back() + one.more);
        startAnew(one.more);
        for (const std::string& line : one.lines)
            line == "restart" ? machine.restart() : machine.owner(line);
        EXPECT_EQ(machine.answer("'delete"), "deleted:  <b>b</b> ");
        EXPECT_EQ(rows(), one.rows);
        EXPECT_EQ(files(), (Lines{"a.mp3", "c.wav"}));
    }
    EXPECT_EQ(files("music/pop"), Lines{"b.mp3"});
}

TEST_F(SongFilesTest, TheRowOfAChoiceGoesAndThePlaceInTheListStays) {
    machine.says({"'num 3", "'play ", "'yes", "'m 2", "'delete"});
    EXPECT_EQ(machine.answer("'pre"), "previous:  <b>1</b>.  a");
    machine.says({"'num 2", "'play ", "'yes", "'m 1", "'delete"});
    EXPECT_EQ(machine.answer("'media"), "viewing media list");
    EXPECT_EQ(machine.answer("'next"), "next:  <b>1</b>.  c (<b>.wav</b>)");
    EXPECT_EQ(rows(), Lines{"c.wav rock"});
    startAnew();
    machine.owner("'num 2");
    machine.restart();
    machine.says({"'play", "'count b ", "'delete"});
    EXPECT_EQ(machine.answer("'pre"), "previous:  <b>1</b>.  a") << "from the row after it";
    for (const char* opening : {"'view", "'yes"}) { // whose choices go with the song in play
        startAnew();
        machine.says({"'num 1", "'play ", opening, "'delete"});
        EXPECT_FALSE(machine.window("larkmain").visible);
        EXPECT_EQ(machine.answer("'m 2"), "");
    }
}

// A full disk, a disk that can't be read: which song is in play is known without it.
TEST_F(SongFilesTest, TheFileThatGoesIsThatOfTheSongInPlay) {
    for (bool FaultyFiles::*fault : {&FaultyFiles::full, &FaultyFiles::unreadable}) {
        startAnew();
        machine.owner("'num 1");
        machine.files.*fault = true;
        machine.owner("'num 3");
        converse(machine, {Turn("'info", "song:  c (<b>.wav</b>)"),
                           Turn("'times", "this song has been played <b>0</b> times"),
                           Turn("'play", "playing temp:  c"),
                           Turn("'rename d", "rename current song to:  <b>d (<b>.wav</b>)"),
                           Turn("'play", "playing temp:  d"),
                           Turn("'delete", "deleted:  <b>d</b>  (<b>.wav</b>)")});
        EXPECT_EQ(files(), (Lines{"a.mp3", "b.mp3"}));
        EXPECT_EQ(rows(), (Lines{"a.mp3 rock", "b.mp3 rock"}));
        machine.files.*fault = false;
    }
    machine.owner("'num 2");
    machine.files.failReadAt = machine.files.reads + 1;
    EXPECT_EQ(machine.answer("'info").substr(0, 8), "song:  b");
    EXPECT_EQ(machine.answer("'delete"), "deleted:  <b>b</b> ");
}

TEST_F(SongFilesTest, NoFileGoesBeforeASongHasBeenStarted) {
    machine.owner("'num 2");
    machine.restart();
    std::filesystem::remove(machine.disk.path() / "music/rock/c.wav");
    // None of these starts one.
    for (const char* line : {"'play ", "'play c", "'num 3", "'rnd c"}) {
        machine.owner(line);
        EXPECT_EQ(machine.answer("'delete"), noSong) << line;
    }
    EXPECT_EQ(files(), (Lines{"a.mp3", "b.mp3"}));
    converse(machine,
             {Turn("'play", "playing temp:  b"), Turn("'rename d", "rename current song to:  <b>d"),
              Turn("'play", "playing temp:  d")});
    EXPECT_EQ(rows(), (Lines{"a.mp3 rock", "c.wav rock", "d.mp3 rock"}));
}

// `info` names the one from disk, and the other one plays no longer.
TEST_F(SongFilesTest, AFileFromDiskInPlaySavesTheSongBeforeIt) {
    machine.owner("'num 2");
    machine.disk.write("other.mp3", "mine");
    machine.dialogs.answers = {machine.drive("other.mp3")};
    machine.click("mp3s", "openButton");
    converse(machine, {Turn("'info", "song:  other"), Turn("'delete", noSong)});
    EXPECT_EQ(files(), (Lines{"a.mp3", "b.mp3", "c.wav"}));
    clickRename(1, "d");
    EXPECT_EQ(machine.answer("'play"), "playing temp:  d");
}

// The message tells of the new song, and what is typed in it is about that one.
TEST_F(SongFilesTest, ASongIsInPlayFromItsOpeningOn) {
    machine.owner("'num 1");
    machine.inMessage("next:", [&] { machine.hear("'delete"); });
    machine.owner("'next");
    EXPECT_EQ(machine.said(), "deleted:  <b>b</b> ");
    EXPECT_EQ(files(), (Lines{"a.mp3", "c.wav"}));
    EXPECT_EQ(rows(), (Lines{"a.mp3 rock", "c.wav rock"}));
}

TEST_F(SongFilesTest, RenameCarriesRowAndCountAlong) {
    EXPECT_EQ(machine.answer("'rename x"), "what the fuck are you gonna rename, stupid?");
    machine.says({"'num 2", "'count a  "});
    EXPECT_EQ(machine.answer("'rename Me.mp3"), "rename current song to:  <b>Me.mp3");
    EXPECT_EQ(machine.player.PlayState(), PlayState::closed);
    EXPECT_EQ(rows(), (Lines{"a.mp3 rock", "c.wav rock", "Me.mp3.mp3 rock"}));
    EXPECT_EQ(counts(), "a.mp3=2\r\nMe.mp3.mp3=4\r\n");
    EXPECT_EQ(machine.state().masterIndex(), -1);
    EXPECT_EQ(machine.answer("'play"), "playing temp:  Me.mp3");
    machine.says({"'num 3", "'rename y", "'rename z", "'num 2", "'rename C"});
    EXPECT_EQ(rows(), (Lines{"a.mp3 rock", "C.wav rock", "z.mp3 rock"}));
    EXPECT_EQ(files(), (Lines{"C.wav", "a.mp3", "z.mp3"}));
    EXPECT_EQ(counts(), "a.mp3=2\r\nz.mp3=4\r\n") << "a song never played has none";
    machine.says({"'num 1", "'rename A"});
    EXPECT_EQ(machine.answer("'times"), "this song has been played <b>2</b> times");
}

TEST_F(SongFilesTest, RenameRefusesWhatIsNoNewName) {
    machine.owner("'num 2");
    for (const std::string& name :
         Lines{"", " x", "a/b", "..\\b", "a:b", "a<b", "a>b", "a|b", "b", "a\tb", "a\nb", "a\x7F"})
        EXPECT_EQ(machine.answer("'rename " + name), "that wont work dumbass") << name;
    EXPECT_EQ(machine.player.PlayState(), PlayState::playing);
    EXPECT_EQ(files(), (Lines{"a.mp3", "b.mp3", "c.wav"}));
}

TEST_F(SongFilesTest, RenameKeepsToItsDirectoryAndOverNothing) {
    machine.disk.write("music/rock/A.mp3", "other");
    const std::string longName(300, 'x');
    for (const auto& [name, onDisk] :
         std::map<std::string, std::string>{{"..", "...mp3"},
                                            {"who? *\"", "who? *\".mp3"},
                                            {"..\uF02Fa", "..\uF02Fa.mp3"},
                                            {"B", "B.mp3"},
                                            {"a", "b.mp3"},
                                            {"A", "b.mp3"},
                                            {longName, "b.mp3"}}) {
        SCOPED_TRACE(name);
        machine.disk.write("music/rock/b.mp3", "mine");
        startOn(makerow("b", ".mp3", machine.drive("music/rock")));
        machine.owner("'num 1");
        const bool isRenamed = onDisk != "b.mp3";
        EXPECT_TRUE(machine.answer("'rename " + name)
                        .starts_with(isRenamed ? "rename current song to:  <b>" + name
                                               : "couldn't rename <b>b.mp3</b>:  "))
            << machine.said();
        EXPECT_EQ(rows(), Lines{(isRenamed ? asStored(name) : "b") + ".mp3 rock"});
        EXPECT_EQ(machine.disk.read("music/rock/" + onDisk), "mine");
        std::filesystem::remove(machine.disk.path() / "music/rock" / onDisk);
    }
    EXPECT_EQ(files(), (Lines{"A.mp3", "a.mp3", "c.wav"}));
    EXPECT_EQ(files("music"), Lines{"rock"});
    EXPECT_EQ(machine.disk.read("music/rock/a.mp3"), "sound");
}

// As the box shows the old name: a new one keeps of it what the owner has left.
TEST_F(SongFilesTest, TheRenameBoxKeepsBytesAndCharactersOfTheOldName) {
    const struct {
        const char *onDisk, *answer, *then;
    } edits[] = {
        {"caf\xE9: \"?\".wav", "caf\uFFFD: \"?\"", "caf\xE9: \"?\".wav"},
        {"caf\xE9: \"?\".wav", "my caf\uFFFD: who?*", "my caf\xE9: who?*.wav"},
        {"a<b>|\\\n.wav", "a<b>|\\\u240A 2", "a<b>|\\\n 2.wav"},
        {"a:b.wav", "a<b", "a:b.wav"},
        {"a.wav", "a: b", "a.wav"},
    };
    for (const auto& [onDisk, answer, then] : edits) {
        SCOPED_TRACE(answer);
        std::filesystem::remove_all(machine.disk.path() / "music/rock");
        machine.song("rock", onDisk);
        startOn("");
        machine.says({"'filter wav", "'scan " + machine.drive("music"), "'transfer"});
        clickRename(0, answer);
        EXPECT_EQ(files(), Lines{then});
        EXPECT_TRUE(machine.answer("'num 1").starts_with("playing:  <b>1</b>"));
    }
}

TEST_F(SongFilesTest, SilentModeAnswersInBoxes) {
    machine.state().silnt = true;
    converse(machine, {Turn("'delete", "[box] " + noSong), Turn("'num 3", ""),
                       Turn("'rename c", ""), Turn("'rename d", "[box] renamed c.wav to d.mp3"),
                       Turn("'delete", "[box] deleted d.wav")});
    EXPECT_EQ(machine.disk.read("share/Trash/files/d.wav"), "sound");
    machine.files.refusesMoves = true;
    machine.owner("'num 1");
    EXPECT_EQ(machine.answer("'delete"), "[box] couldn't delete a.mp3" + refused);
}

// Of one that doesn't answer nobody knows what it still does.
TEST_F(SongFilesTest, WhatTheDiskRefusesIsToldAndLeftAsItWas) {
    machine.owner("'num 2");
    for (const bool answers : {true, false}) {
        machine.files.refusesMoves = answers;
        machine.slowDisk.spans[machine.drive("music/rock")] = answers ? 0s : 10s;
        const auto undone = [&](const std::string& verb, const std::string& title) {
            return answers ? "couldn't " + verb + " " + title + refused
                           : "the disk doesn't answer, it may still " + verb + " " + title;
        };
        for (const std::string line : {"'rename d", "'delete", "'rename d", "'delete"})
            EXPECT_EQ(machine.answerTo([&] { machine.owner(line, 11s); }),
                      undone(line.substr(1, 6), "<b>b.mp3</b>"));
        strikeDelete(0, "yes");
        machine.advance(11s);
        EXPECT_EQ(machine.lastBox(), undone("delete", "a.mp3"));
        clickRename(0, "d");
        machine.advance(11s);
        EXPECT_EQ(machine.lastBox(), undone("rename", "a.mp3"));
    }
    machine.slowDisk.spans.clear();
    std::filesystem::remove(machine.disk.path() / "music/rock/b.mp3");
    EXPECT_TRUE(machine.answer("'delete").starts_with("couldn't delete <b>b.mp3</b>:  "));
    EXPECT_TRUE(machine.answer("'rename d").starts_with("couldn't rename <b>b.mp3</b>:  "));
    EXPECT_EQ(rows(), (Lines{"a.mp3 rock", "b.mp3 rock", "c.wav rock"}));
    EXPECT_EQ(counts(), "a.mp3=2\r\nb.mp3=4\r\n");
    EXPECT_EQ(machine.trayEntry("mp3z"), "view 3 files");
    EXPECT_EQ(machine.answer("'play").substr(0, 10), "not found,");
}

TEST_F(SongFilesTest, WaitFiveSecondsAtMostForThePlayer) {
    machine.player.closing = 1h;
    machine.player.lengths[""] = 1; // as if what is stopped meanwhile had come to its end
    machine.owner("'num 2");
    const auto before = machine.loop.now();
    EXPECT_EQ(machine.answer("'delete"), "deleted:  <b>b</b> ");
    EXPECT_EQ(std::chrono::round<std::chrono::seconds>(machine.loop.now() - before), 5s);
    EXPECT_EQ(files(), (Lines{"a.mp3", "c.wav"}));
    EXPECT_EQ(machine.setting("played"), "") << "left before its end";
}

TEST_F(SongFilesTest, ASongStartedWhileThePlayerLetsGoPlaysOn) {
    for (const std::string& command : Lines{"'delete", "'rename d"}) {
        startAnew();
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

TEST_F(SongFilesTest, ASongStartedWhileTheDiskTakesItsTimePlaysOn) {
    startAnew(machine.song("pop", "d.mp3"));
    const auto slow = [&](const std::function<void()>& hand) {
        for (const int seconds : {60, 2}) {
            machine.owner("'num 2");
            machine.slowDisk.spans[machine.drive("music/rock")] = std::chrono::seconds(seconds);
            machine.loop.once(1s, [&] { machine.hear("'play d"); });
            hand();
            machine.slowDisk.spans.clear();
            EXPECT_EQ(machine.player.PlayState(), PlayState::playing);
            EXPECT_EQ(machine.answer("'info"), "song:  d");
            EXPECT_EQ(machine.setting("play"), "d.mp3");
        }
    };
    slow([&] { machine.owner("'rename e"); });
    EXPECT_EQ(rows(), (Lines{"a.mp3 rock", "c.wav rock", "d.mp3 pop", "e.mp3 rock"}));
    slow([&] { machine.owner("'delete"); });
    EXPECT_EQ(rows(), (Lines{"a.mp3 rock", "d.mp3 pop", "e.mp3 rock"}));
    machine.song("rock", "c.mp3");
    machine.owner("'ref rock");
    slow([&] { clickRename(1, "b"); });
    EXPECT_EQ(rows(), (Lines{"a.mp3 rock", "b.mp3 rock", "d.mp3 pop", "e.mp3 rock"}));
    slow([&] { strikeDelete(1, "yes"); });
    EXPECT_EQ(rows(), (Lines{"a.mp3 rock", "d.mp3 pop", "e.mp3 rock"}));
    EXPECT_EQ(machine.answer("'delete"), "deleted:  <b>d</b> ");
}

TEST_F(SongFilesTest, ASlowDiskHasNoPartInTheNextRun) {
    for (const char* line : {"'rename d", "'delete"}) {
        machine.owner("'num 1");
        machine.slowDisk.spans[machine.drive("music/rock")] = 3s;
        machine.loop.once(1s, [&] {
            machine.restart();
            machine.slowDisk.spans.clear();
            machine.owner("'play c");
            machine.forget();
        });
        machine.owner(line, 5s);
        EXPECT_EQ(machine.allSaid(), Lines{});
        EXPECT_EQ(machine.answer("'info"), "song:  c (<b>.wav</b>)");
    }
}

TEST_F(SongFilesTest, AChoiceOpenedWhileThePlayerLetsGoStaysOpen) {
    machine.owner("'num 2");
    hearInBetween({"'play "});
    machine.owner("'rename d");
    EXPECT_EQ(machine.state().choiceList.count(), 3);
}

TEST_F(SongFilesTest, TheDeleteKeyAsksFirst) {
    strikeDelete(noRow, "yes");
    EXPECT_EQ(machine.lastBox(), "") << "no row is current";
    machine.says({"'cont", "'num 1"});
    strikeDelete(1, "no");
    EXPECT_EQ(machine.lastBox(), "do you really wanna delete b?");
    EXPECT_EQ(machine.state().masterIndex(), 1);
    EXPECT_EQ(files(), (Lines{"a.mp3", "b.mp3", "c.wav"}));
    strikeDelete(1, "yes");
    EXPECT_EQ(machine.allSaid(), Lines{});
    EXPECT_EQ(machine.disk.read("share/Trash/files/b.mp3"), "sound");
    EXPECT_EQ(rows(), (Lines{"a.mp3 rock", "c.wav rock"}));
    EXPECT_EQ(machine.window("mp3s").control("fileCountLabel").text(), "2 files");
    EXPECT_EQ(counts(), "a.mp3=2\r\n");
    EXPECT_EQ(machine.saidWithin(180s), Lines{"next:  <b>1</b>.  a"}) << "the mode goes on";
    machine.owner("'num 1");
    machine.files.refusesMoves = true;
    strikeDelete(0, "yes");
    EXPECT_EQ(machine.lastBox(), "couldn't delete a.mp3" + refused);
    EXPECT_EQ(machine.player.PlayState(), PlayState::closed) << "it was the song in play";
    EXPECT_EQ(rows(), (Lines{"a.mp3 rock", "c.wav rock"}));
}

TEST_F(SongFilesTest, TheRenameLabelWorksOnAnyRow) {
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
    EXPECT_EQ(rows(), (Lines{"a.mp3 rock", "c.wav rock", "d.mp3 rock"}));
    EXPECT_TRUE(machine.state().playedMemory.empty());
    EXPECT_EQ(machine.player.PlayState(), PlayState::playing);
    clickRename(0, "d"); // the song in play, to a name that is taken
    EXPECT_TRUE(machine.lastBox().starts_with("couldn't rename a.mp3:  ")) << machine.lastBox();
    EXPECT_EQ(machine.player.PlayState(), PlayState::closed);
}

TEST_F(SongFilesTest, ASongOfThatNameElsewhereIsNotTheOneInPlay) {
    startOn(machine.song("pop", "a.mp3") + "\r\n" + machine.song("rock", "a.mp3"));
    machine.owner("'num 2");
    clickRename(0, "d");
    EXPECT_EQ(machine.player.PlayState(), PlayState::playing);
    EXPECT_EQ(machine.answer("'info"), "song:  a");
    EXPECT_EQ(machine.state().resumeIndex, "0");
    EXPECT_EQ(rows(), (Lines{"a.mp3 rock", "d.mp3 pop"}));
    strikeDelete(1, "yes");
    EXPECT_EQ(machine.player.PlayState(), PlayState::playing);
    EXPECT_EQ(files("music/pop"), Lines{});
}

TEST_F(SongFilesTest, OneDirectoryStaysOneHoweverItIsSpelled) {
    const std::string rock = machine.drive("music/rock");
    startOn(makerow("a", ".mp3", rock + "\\\\") + "\r\n" + makerow("b", ".mp3", rock + "\\") +
            "\r\n" + makerow("c", ".wav", rock));
    converse(machine, {Turn("'num 1", "playing:  <b>1</b>.  a"),
                       Turn("'rename A", "rename current song to:  <b>A"),
                       Turn("'num 2", "playing:  <b>2</b>.  b"),
                       Turn("'rename B", "rename current song to:  <b>B"),
                       Turn("'dir?", "total number of directories:  <b>1")});
    EXPECT_EQ(rows(), (Lines{"A.mp3 rock", "B.mp3 rock", "c.wav rock"}));
}

TEST_F(SongFilesTest, WhatTheOwnerWasAskedAboutIsFoundAgain) {
    hearInBetween({"'listrmv a    "});
    strikeDelete(1, "yes");
    EXPECT_EQ(files(), (Lines{"a.mp3", "c.wav"}));
    EXPECT_EQ(rows(), Lines{"c.wav rock"});
    hearInBetween({"'listrmv rock"});
    clickRename(0, "d");
    EXPECT_EQ(files(), (Lines{"a.mp3", "d.wav"}));
    EXPECT_EQ(rows(), Lines{}) << "the list that has taken its place stays as it is";
}

} // namespace larkspin
