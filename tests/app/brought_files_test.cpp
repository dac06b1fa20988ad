// Files and directories that come from outside.
#include "app/program.h"
#include "library/playlist_row.h"
#include "support/virtual_machine.h"

#include <gtest/gtest.h>

namespace larkspin {

using Then = BroughtFiles::Then;

struct FilesFromOutside : testing::Test {
    FilesFromOutside() {
        for (const char* file : {"a/high.mp3", "a/ride.mp3", "b/deep/x.FLAC", "b/y.ogg",
                                 "b/._y.ogg", "b/.hidden/z.mp3", "b/notes.txt", "c/cover.jpg"})
            machine.disk.write("music/" + std::string(file), "song");
        machine.start();
        machine.owner("'filter mp3");
        machine.room.told.clear();
        machine.forget();
    }
    // What the owner is told, with the directory of the music left out.
    Lines told(const Lines& below, Then then) {
        Lines paths;
        for (const std::string& path : below)
            paths.push_back(path.find(':') == path.npos ? in(path) : path);
        machine.room.told.clear();
        machine.run([&] { machine.program->bring(paths, then); });
        Lines lines;
        for (std::string line : machine.room.told) {
            for (auto at = line.find(in("")); at != line.npos; at = line.find(in("")))
                line.erase(at, in("").size());
            lines.push_back(line);
        }
        return lines;
    }
    std::string in(const std::string& below) const { return machine.drive("music") + '\\' + below; }
    static std::string takesOut(int count) {
        return "the media filter is mp3:  a refresh takes " + std::to_string(count) +
               " of these out, but not after 'filter any";
    }
    std::string playing() { return songOfPath(machine.player.FileName()).title(); }

    VirtualMachine machine;
};

TEST_F(FilesFromOutside, AreAddedPlayedAndTold) {
    const std::string filtered = takesOut(1); // told once
    const struct {
        Lines brought;
        Then then;
        Lines told;
        std::string playing;
    } steps[] = {
        {{"a\\ride.mp3"}, Then::adding, {"added ride"}, ""},
        {{"a\\ride.mp3"}, Then::adding, {"ride is in the list already"}, ""},
        {{"a\\ride.mp3"}, Then::playing, {"playing ride"}, "ride.mp3"},
        {{"a"}, Then::playing, {"added 1 song from a, 1 was there"}, "ride.mp3"},
        {{"a"}, Then::adding, {"2 songs from a are in the list already"}, "ride.mp3"},
        {{"b\\y.ogg"}, Then::playing, {"added and playing y", filtered}, "y.ogg"},
        {{"c", "gone.mp3", "b\\notes.txt", "a\\high.mp3", "b", "c\\cover.jpg", "x:\\a"},
         Then::playing,
         {"added 1 song, 2 were there, playing high", "no songs in c",
          "couldn't open b\\notes.txt and 1 more:  not of a type that can be played",
          "couldn't open gone.mp3 and 1 more:  there is no such file"},
         "high.mp3"},
        {{"c"}, Then::adding, {"no songs in c"}, "high.mp3"},
        {{"smb://x/a.mp3", "http://x/b.mp3"},
         Then::playing,
         {"couldn't open smb://x/a.mp3 and 1 more:  it is no file of this machine"},
         "high.mp3"},
        {{"c\\cover.jpg"},
         Then::playing,
         {"couldn't open c\\cover.jpg:  not of a type that can be played"},
         "high.mp3"},
    };
    for (const auto& step : steps) {
        EXPECT_EQ(told(step.brought, step.then), step.told);
        EXPECT_EQ(playing(), step.playing);
    }
    EXPECT_EQ(machine.titles(), (Lines{"high.mp3", "ride.mp3", "x.FLAC", "y.ogg"}));
    EXPECT_EQ(machine.allSaid(), Lines{}) << "to others";
    EXPECT_EQ(machine.lastBox(), "");
}

TEST_F(FilesFromOutside, AreKnownByAnySpellingOfTheirRow) {
    machine.dialogs.answers = {in("a\\ride.mp3")}; // whose row ends with a backslash
    machine.window("mp3s");
    machine.run([&] { machine.program->library.adding.addFiles(); });
    EXPECT_EQ(told({"a\\ride.mp3"}, Then::playing), Lines{"playing ride"});
    EXPECT_EQ(machine.titles(), Lines{"ride.mp3"});
    EXPECT_EQ(machine.answer("'next"), "next:  <b>1</b>.  ride");
}

TEST_F(FilesFromOutside, LeaveAloneASongThatIsStartedWhileADirectoryIsAdded) {
    machine.disk.write("music/b/slow/w.mp3", "song");
    machine.slowDisk.spans[in("b\\slow")] = 3s;
    machine.loop.once(1s, [&] { machine.program->bring({in("a\\high.mp3")}, Then::playing); });
    EXPECT_EQ(told({"a\\ride.mp3", "b"}, Then::playing),
              (Lines{"added and playing high", "looking at b", "added 4 songs", takesOut(2)}));
    EXPECT_EQ(playing(), "high.mp3");
    EXPECT_EQ(machine.titles().size(), 5u);
}

TEST_F(FilesFromOutside, TellOfDisksThatHangAndDirectoriesThatAreClosed) {
    machine.slowDisk.spans[in("a")] = 1min;
    EXPECT_EQ(
        told({"a\\ride.mp3"}, Then::playing),
        (Lines{"looking at a\\ride.mp3", "couldn't open a\\ride.mp3:  the disk doesn't answer"}));
    EXPECT_EQ(told({"a"}, Then::adding),
              (Lines{"looking at a", "couldn't look into a:  the disk doesn't answer"}));
    EXPECT_EQ(machine.titles(), Lines{});
}

// While a directory is taken, others are read ahead, and events come meanwhile.
TEST(FilesOfARun, AreNotAddedToTheNext) {
    struct Shelves : Directories {
        DirectoryRead list(const std::string& path) override {
            if (path == "c:\\m\\b")
                reads();
            return path == "c:\\m" ? DirectoryRead(DirectoryListing{path, {}, {"a", "b"}})
                   : path == "c:\\m\\a"
                       ? DirectoryRead(DirectoryListing{path, {"ride.mp3"}, {"deep"}})
                       : DirectoryRead(DirectoryListing{path, {}, {}});
        }
        std::vector<std::string> drives() override { return {}; }
        std::string drivePath(std::string_view typed) override { return std::string(typed); }
        Task reads = [] {};
    } shelves;
    VirtualMachine machine;
    machine.startOn(shelves);
    int added = -1;
    shelves.reads = [&] {
        added = machine.state().masterList.count();
        machine.chooseFromTray("rstartp");
    };
    machine.run([&] { machine.program->bring({"c:\\m"}, Then::adding); });
    EXPECT_EQ(machine.state().masterList.count(), added);
}

TEST_F(FilesFromOutside, PlayAlsoWhereTheListIsFull) {
    for (int row = 0; row < RowList::limit; ++row)
        machine.state().masterList.add(Row(std::to_string(row)));
    machine.state().playlistView = machine.state().masterList;
    EXPECT_EQ(told({"a\\ride.mp3"}, Then::playing),
              (Lines{"playing ride", "a list holds 32767 songs, left out 1"}));
    EXPECT_EQ(playing(), "ride.mp3");
}

TEST(FilesAtTheFirstRun, AreTakenOnceItsBoxIsClosedWhichIsSaid) {
    VirtualMachine machine;
    machine.disk.write("ride.mp3", "song");
    const auto bring = [&] { machine.program->bring({machine.drive("ride.mp3")}, Then::playing); };
    machine.loop.once(50ms, bring); // before the box
    machine.dialogs.whileOpen = [&] {
        machine.loop.waitUntil(machine.loop.now() + 1s);
        EXPECT_EQ(machine.room.told, Lines{"files are taken once the box is closed"});
        machine.room.told.clear();
        bring();
        EXPECT_EQ(machine.room.told, Lines{"files are taken once the box is closed"});
    };
    machine.start();
    machine.advance(1s);
    EXPECT_EQ(machine.room.told.back(), "playing ride");
    EXPECT_EQ(machine.titles(), Lines{"ride.mp3"});
}

TEST_F(FilesFromOutside, WaitUntilTheProgramRuns) {
    const auto bring = [&] { machine.program->bring({in("a\\ride.mp3")}, Then::playing); };
    machine.loop.once(50ms, bring); // in the middle of the restart
    machine.owner("'restart", 5s);
    EXPECT_EQ(playing(), "ride.mp3");
    EXPECT_EQ(machine.titles(), Lines{"ride.mp3"});
}

} // namespace larkspin
