// The refresh against the disk, and the questions about the list's rows and directories.
#include "app/program.h"
#include "library/playlist.h"
#include "library/playlist_row.h"
#include "shell/window.h"
#include "support/talk.h"

namespace larkspin {
namespace {

namespace fs = std::filesystem;

struct RefreshTest : testing::Test {
    void add(const std::string& row) { addToPlaylist(machine.state(), Row(row)); }
    void addFile(const std::string& below, const std::string& name) {
        add(machine.song(below, name));
    }
    void removeFile(const std::string& below) { fs::remove(machine.disk.path() / "music" / below); }
    std::string directory(const std::string& name) { return machine.drive("music/" + name); }
    VirtualMachine machine{Lines{"a.mp3", "b.mp3"}};
};

TEST_F(RefreshTest, BringsInWhatHasComeAndTakesOutWhatHasGone) {
    machine.owner("'num 1");
    EXPECT_EQ(machine.answer("'ref"), "list refreshed - no change");
    EXPECT_EQ(machine.answer("'next"), "next:  <b>1</b>.  a") << "from the front again";
    machine.song("rock", "c.mp3");
    machine.song("rock", "d.mp3");
    machine.song("rock/below", "e.mp3");
    machine.state().playlistView.choose(0);
    EXPECT_EQ(machine.answer("'ref"), "list refreshed - added <b>2</b> new songs");
    EXPECT_EQ(machine.state().playlistView.currentIndex(), -1);
    EXPECT_EQ(machine.titles(), (Lines{"a.mp3", "b.mp3", "c.mp3", "d.mp3"}));
    EXPECT_EQ(machine.window("mp3s").control("fileCountLabel").text(), "4 files");
    EXPECT_EQ(machine.trayEntry("mp3z"), "view 4 files");
    removeFile("rock/a.mp3");
    EXPECT_EQ(machine.answer("'ref"), "list refreshed - removed <b>1</b> songs");
    removeFile("rock/b.mp3");
    machine.song("rock", "b2.mp3");
    machine.state().silnt = true;
    EXPECT_EQ(machine.answer("'ref"), "");
    EXPECT_EQ(machine.titles(), (Lines{"b2.mp3", "c.mp3", "d.mp3"}));
    EXPECT_EQ(machine.state().searchTerm, "no change");
}

TEST_F(RefreshTest, ListsADirectoryOnceHoweverItIsSpelled) {
    const std::string rock = directory("rock");
    for (const char* after : {"\\", "\\\\"})
        add(makerow("a", ".mp3", rock + after));
    add("a line that is no row");
    EXPECT_EQ(machine.answer("'ref"), "list refreshed - removed <b>2</b> songs");
    EXPECT_EQ(rowdir(machine.state().masterList.row(0)), rock);
    EXPECT_EQ(machine.answer("'ref"), "list refreshed - no change");
    machine.owner("'clearpl");
    add(makerow("a", ".mp3", rock + "\\\\"));
    EXPECT_EQ(machine.answer("'ref"), "list refreshed - added <b>1</b> new songs");
}

TEST_F(RefreshTest, KeepsTheRowsOfWhatCantBeListed) {
    for (const char* name : {"1.mp3", "2.mp3"}) {
        addFile("stick/pop", name);
        addFile("nas", name);
    }
    add(rowOfFile("3.mp3", directory("nas/below")));
    fs::remove_all(machine.disk.path() / "music/stick");
    removeFile("rock/a.mp3");
    machine.slowDisk.spans[directory("nas")] = 1min;
    machine.slowDisk.spans[directory("nas/below")] = 1min;
    const std::string unread =
        "couldn't look into <b>" + directory("nas") +
        "</b> and <b>2</b> more directories:  the disk doesn't answer - kept "
        "<b>5</b> songs";
    EXPECT_EQ(machine.answer("'ref"), "list refreshed - removed <b>1</b> songs\n" + unread);
    EXPECT_EQ(machine.titles(), (Lines{"1.mp3", "1.mp3", "2.mp3", "2.mp3", "3.mp3", "b.mp3"}));
    EXPECT_EQ(machine.answer("'ref stick"),
              "found <b>0</b> (<b>mp3</b>) in <b>0</b> directories\ncouldn't look into <b>" +
                  directory("stick/pop") + "</b>:  it isn't there - kept <b>2</b> songs");
    machine.chooseFromTray("rol");
    EXPECT_EQ(machine.answerTo([&] {
        machine.restart();
        machine.advance(1s);
    }),
              "restarting larkspin player\nlarkspin player - by moraine\n"
              "load:  <b>2</b> - mp3s played:  <b>0</b>\n" +
                  unread);
    EXPECT_EQ(machine.titles().size(), 6u);
    machine.owner("'clearpl");
    add(rowOfFile("4.mp3", "c:\\"));
    machine.slowDisk.spans["c:\\"] = 1min;
    EXPECT_EQ(machine.answer("'ref"),
              "list refreshed - no change\ncouldn't look into <b>c:\\</b>:  the disk doesn't "
              "answer - kept <b>1</b> songs");
}

// The directories of a whole collection on a disk that takes its time for each.
TEST_F(RefreshTest, AnswersWhileItLists) {
    for (int number = 100; number < 428; ++number) {
        addFile(std::to_string(number), "s.mp3");
        machine.slowDisk.spans[directory(std::to_string(number))] = 50ms;
    }
    machine.song("100", "new.mp3");
    machine.says({"'cont", "'num 329"});
    machine.player.setCurrentPosition(machine.player.Duration());
    machine.loop.once(4s, [&] {
        EXPECT_EQ(machine.said(), "next:  <b>330</b>.  s") << "once the one before it had ended";
        machine.owner("'ref");
        EXPECT_EQ(machine.said(), "im still refreshing, wait");
        machine.says({"'listrmv \\100", "'listrmv b "});
    });
    machine.owner("'ref", 20s);
    EXPECT_EQ(machine.said(), "list refreshed - removed <b>2</b> songs");
    EXPECT_EQ(machine.state().masterList.count(), 328);
    machine.owner("'next");
    EXPECT_EQ(machine.said(), "next:  <b>1</b>.  a");
}

TEST_F(RefreshTest, AnswersBetweenTwoDirectoriesOfAFastDisk) {
    EXPECT_EQ(machine.answerTo([&] {
        machine.loop.post([&] { machine.hear("'ref"); });
        machine.hear("'ref");
    }),
              "im still refreshing, wait\nlist refreshed - no change");
}

TEST_F(RefreshTest, ListsWhatTheFilterLetsThrough) {
    addFile("rock", "c.wav");
    machine.owner("'filter wav");
    EXPECT_EQ(machine.answer("'ref"), "list refreshed - removed <b>2</b> songs");
    EXPECT_EQ(machine.titles(), Lines{"c.wav"});
}

TEST_F(RefreshTest, ShowsItselfInPlaceOfTheMediaWindow) {
    machine.song("rock", "c.mp3");
    machine.window("mp3s").visible = true;
    Lines seen;
    for (const auto moment : {50ms, 500ms})
        machine.loop.once(moment, [&] {
            seen.push_back(machine.window("dire").control("statusLine").text());
            EXPECT_TRUE(machine.window("dire").visible);
            EXPECT_FALSE(machine.window("mp3s").visible);
        });
    EXPECT_EQ(machine.answerTo([&] { machine.click("mp3s", "Command5"); }), "");
    EXPECT_EQ(seen, (Lines{"refreshing list...", "added 1 new songs"}));
    EXPECT_TRUE(machine.window("mp3s").visible);
    machine.window("mp3s").visible = false;
    removeFile("rock/c.mp3");
    const auto begin = machine.loop.now();
    EXPECT_EQ(machine.answer("'ref"), "list refreshed - removed <b>1</b> songs");
    EXPECT_EQ(machine.loop.now(), begin);
    EXPECT_FALSE(machine.window("dire").visible);
    EXPECT_EQ(machine.state().searchTerm, "removed 1 songs");
}

TEST_F(RefreshTest, RunsAtStartWhenTheOwnerWantsIt) {
    machine.song("rock", "c.mp3");
    machine.restart();
    EXPECT_EQ(machine.titles().size(), 2u);
    machine.chooseFromTray("rol");
    machine.restart();
    EXPECT_EQ(machine.titles().size(), 3u);
    EXPECT_TRUE(machine.said().starts_with("load:")) << "and not what the refresh has found";
}

TEST_F(RefreshTest, OfSomeDirectoriesLooksBelowThemAndKeepsAllOthers) {
    for (const char* place : {"queen", "queen live", "queen/old", "x/queen", "queen/.demos"})
        addFile(place, "1.mp3");
    addFile("queen", "gone.mp3");
    machine.song("x/queen", "new.mp3");
    machine.song("rock", "unseen.mp3");
    removeFile("queen/gone.mp3");
    removeFile("queen live/1.mp3");
    machine.state().playlistView.choose(1);
    machine.owner("'num 6");
    EXPECT_EQ(machine.answer("'ref \\queen"),
              "found <b>4</b> (<b>mp3</b>) in <b>3</b> directories");
    EXPECT_EQ(machine.titles(),
              (Lines{"1.mp3", "1.mp3", "1.mp3", "1.mp3", "a.mp3", "b.mp3", "new.mp3"}));
    EXPECT_EQ(machine.trayEntry("mp3z"), "view 7 files");
    EXPECT_EQ(machine.answer("'ref None such"), "<b>None such</b> not found");
    EXPECT_EQ(machine.answer("'ref QUEEN\\Old"),
              "found <b>1</b> (<b>mp3</b>) in <b>1</b> directories");
    EXPECT_EQ(machine.answer("'next"), "next:  <b>6</b>.  b") << "the row in play is kept";
}

TEST_F(RefreshTest, OfAnEmptyListAndInSilence) {
    machine.owner("'clearpl");
    converse(machine, {Turn({"'ref x", "'ref "}, "nothin to refresh, bitch"),
                       Turn("'ref", "list refreshed - no change")});
    addFile("rock", "a.mp3");
    machine.song("rock", "new.mp3");
    machine.state().silnt = true;
    EXPECT_EQ(machine.answer("'ref rock"), "[box] scanning");
    EXPECT_EQ(machine.titles(), Lines{"a.mp3"});
}

TEST_F(RefreshTest, LeavesTheListAloneWhenAnotherScanComesIn) {
    machine.song("pop", "p.mp3");
    machine.inMessage("", [&] { machine.owner("'scan " + directory("pop")); });
    machine.owner("'ref rock");
    EXPECT_EQ(machine.titles(), (Lines{"a.mp3", "b.mp3"}));
}

TEST_F(RefreshTest, QuestionsAboutTheListAreAnswered) {
    for (const char* name : {"c.mp3", "Ride.mp3", "z.mp3"})
        addFile("pop", name);
    const std::string tail = directory("pop").substr(directory("pop").size() - 4);
    converse(machine, {Turn("'media?", "media count:  <b>5"),
                       Turn("'dir?", "total number of directories:  <b>2"),
                       Turn("'count RIDE", "<b>1</b> matches for <b>RIDE</b>, <b>20</b>% of <b>5"),
                       Turn("'next", "next:  <b>5</b>.  z"),
                       Turn("'count .mp3", "<b>5</b> matches for <b>.mp3</b>, <b>100</b>% of <b>5"),
                       Turn("'count ", "<b>5</b> matches for <b></b>, <b>100</b>% of <b>5"),
                       Turn({"'count none", "'count " + tail}, "your gay song was not found")});
    addFile("pop", "x.mp3");
    machine.state().silnt = true;
    converse(machine, {Turn("'media?", "[box] media count:  6"), Turn("'dir?", ""),
                       Turn("'count ride", "[box] 1 matches for ride, 16.67% of 6"),
                       Turn("'count none", "[box] your gay song was not found")});
}

TEST_F(RefreshTest, DirectoriesAreScrolledWithTimeToRead) {
    addFile("pop", "c.mp3");
    const std::string first = "<b>1.</b>  " + directory("rock"),
                      second = "<b>2.</b>  " + directory("pop"),
                      head = "scrolling <b>2</b> directories";
    EXPECT_EQ(machine.answer("'scrd"), head + "\n" + first + "\n" + second);
    EXPECT_EQ(machine.state().masterIndex(), 2);
    machine.loop.once(800ms, [&] { machine.owner("'listrmv pop"); });
    machine.loop.once(900ms, [&] { machine.owner("'dir?"); });
    EXPECT_EQ(machine.answer("'scrd"), head + "\n" + first +
                                           "\nremoved <b>1</b> items for <b>pop</b> (<b>2</b>)\n"
                                           "total number of directories:  <b>1");
    machine.owner("'clearpl");
    EXPECT_EQ(machine.answer("'scrd"), "scrolling <b>0</b> directories");
}

} // namespace
} // namespace larkspin
