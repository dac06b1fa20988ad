// The list on screen is there again at the next start, whatever has become of its file.
#include "app/program.h"
#include "library/playlist_row.h"
#include "support/talk.h"

namespace larkspin {
namespace {

namespace fs = std::filesystem;

struct ListOnScreen : testing::Test {
    void write(const std::string& below, const Lines& songs) {
        std::string rows;
        for (const std::string& song : songs)
            rows += machine.song("rock", song) + "\r\n";
        machine.disk.write(below, rows);
    }
    void chooseFromOps(const std::string& entry, const std::string& answer) {
        machine.dialogs.answers = {answer};
        machine.click("mp3s", "Command3");
        machine.chooseFromPopup(entry);
    }
    void add(const std::string& song) {
        machine.song("pop", song);
        machine.owner("'scan " + machine.drive("music/pop"));
        machine.owner("'transfer");
    }
    std::string names() {
        std::string found;
        for (int index = 0; index < machine.state().masterList.count(); ++index)
            found += std::string(rowname(machine.state().masterList.row(index))) + ' ';
        return found;
    }
    std::string namesAfterStart() {
        return namesAfterStart([] {});
    }
    std::string namesAfterStart(const std::function<void()>& between) {
        machine.endProcess();
        between();
        machine.start();
        return names();
    }
    void breakFile(const std::string& name) { machine.files.broken = name; }
    VirtualMachine machine{Lines{"a.mp3", "b.mp3"}};
};

TEST_F(ListOnScreen, ComesBackWithoutANameThoughOneWasSavedBefore) {
    machine.owner("'save mix");
    EXPECT_EQ(namesAfterStart(), "a b ");
    chooseFromOps("nlis", "yes");
    add("new.mp3");
    EXPECT_EQ(namesAfterStart(), "new ");
    EXPECT_EQ(machine.answer("'pl"), "temporarly playlist in use");
    EXPECT_EQ(namesAfterStart(), "new ");
    EXPECT_EQ(machine.answer("'list mix"), "loaded playlist <b>mix.lkl</b>, <b>2</b> files");
    EXPECT_EQ(namesAfterStart(), "a b ");
    EXPECT_EQ(machine.answer("'pl"), "playlist in use:  <b>mix.lkl");
}

TEST_F(ListOnScreen, ComesBackFromAStickThatIsGone) {
    for (const bool hasNamesake : {false, true}) {
        write("stick/far.lkl", {"z.mp3"});
        if (hasNamesake)
            write("data/far.lkl", {"other.mp3"});
        chooseFromOps("loadlis", machine.drive("stick/far.lkl"));
        fs::remove_all(machine.disk.path() / "stick");
        EXPECT_EQ(namesAfterStart(), "z ");
        EXPECT_EQ(machine.answer("'pl"), "playlist in use:  <b>far.lkl");
        EXPECT_EQ(namesAfterStart(), "z ");
    }
    EXPECT_NE(machine.dataFile("far.lkl").find("other"), std::string::npos);
}

TEST_F(ListOnScreen, ComesBackAsItWasChangedAndItsFileOnlyWhenItIsSaved) {
    machine.owner("'save mix");
    const std::string saved = machine.dataFile("mix.lkl");
    machine.owner("'listrmv b   ");
    add("c.mp3");
    EXPECT_EQ(namesAfterStart(), "a c ");
    EXPECT_EQ(machine.dataFile("mix.lkl"), saved);
    EXPECT_EQ(machine.answer("'pl"), "playlist in use:  <b>mix.lkl");
    machine.owner("'save mix");
    EXPECT_EQ(namesAfterStart(), "a c ");
    EXPECT_EQ(namesAfterStart([&] { machine.writeDataFile("mix.lkl", saved); }), "a b ");
    fs::remove(machine.disk.path() / "data/mix.lkl");
    EXPECT_EQ(namesAfterStart(), "a b ");
}

TEST_F(ListOnScreen, OfAFileThatCantBeReadIsWhatHasComeSince) {
    machine.owner("'save mix");
    const std::string saved = machine.dataFile("mix.lkl");
    EXPECT_EQ(namesAfterStart([&] { breakFile("mix.lkl"); }), "");
    EXPECT_SAID(machine, "couldn't load playlist <b>mix.lkl</b>:  the disk can't be read");
    EXPECT_EQ(namesAfterStart(), "");
    for (const char* line : {"'save mix", "'save other"})
        EXPECT_EQ(machine.answer(line).substr(0, 13), "couldn't save") << line;
    EXPECT_FALSE(fs::exists(machine.disk.path() / "data/other.lkl"));
    add("c.mp3");
    EXPECT_EQ(machine.answer("'save mix"),
              "couldn't save playlist <b>mix.lkl</b>:  the disk can't be read");
    EXPECT_EQ(namesAfterStart(), "c ");
    EXPECT_EQ(machine.dataFile("mix.lkl"), saved);
    EXPECT_EQ(namesAfterStart([&] { breakFile(""); }), "a b c ");
    EXPECT_EQ(machine.dataFile("mix.lkl"), saved);
    machine.owner("'save mix");
    EXPECT_EQ(namesAfterStart(), "a b c ");
}

TEST_F(ListOnScreen, IsJoinedByItsFileThatCanBeReadAgain) {
    machine.owner("'save mix");
    EXPECT_EQ(namesAfterStart([&] { breakFile("mix.lkl"); }), "");
    add("c.mp3");
    breakFile("");
    EXPECT_EQ(machine.answer("'save mix"),
              "saved over original playlist <b>mix.lkl</b>, <b>3</b> files");
    EXPECT_EQ(namesAfterStart(), "a b c ");
}

TEST_F(ListOnScreen, WithoutANameOutlivesAFileThatCantBeRead) {
    EXPECT_EQ(namesAfterStart([&] { breakFile("temp.lst"); }), "");
    add("c.mp3");
    EXPECT_EQ(namesAfterStart(), "c ");
    breakFile("");
    EXPECT_EQ(namesAfterStart(), "a b c ");
    EXPECT_EQ(namesAfterStart(), "a b c ");
    EXPECT_FALSE(fs::exists(machine.disk.path() / "data/temp.lst.rescued"));
}

// The file of a list without a name holds the list, or what one with a name has been changed to.
TEST_F(ListOnScreen, ThatCouldntBeLoadedIsNotSavedOverNorLeftBehindByASave) {
    for (const bool isNamed : {false, true}) {
        SCOPED_TRACE(isNamed);
        VirtualMachine other{Lines{"a.mp3", "b.mp3"}};
        const auto rows = [&] { return other.state().masterList.count(); };
        const auto startWith = [&](const std::string& broken) {
            other.endProcess();
            other.files.broken = broken;
            other.start();
        };
        const auto saved = [&](const std::string& name) {
            return other.answer("'save " + name).substr(0, 13) != "couldn't save";
        };
        if (isNamed)
            other.owner("'save mix");
        const std::string mix = other.dataFile("mix.lkl");
        other.owner("'listrmv b   ");
        startWith("temp.lst");
        EXPECT_EQ(rows(), 0);
        EXPECT_FALSE(saved("mix"));
        EXPECT_FALSE(saved("other"));
        EXPECT_EQ(other.dataFile("mix.lkl"), mix);
        other.song("pop", "c.mp3");
        const auto addAgain = [&] {
            other.owner("'scan " + other.drive("music/pop"));
            other.owner("'transfer");
        };
        addAgain();
        if (isNamed)
            EXPECT_EQ(other.answer("'save mix"),
                      "couldn't save playlist <b>mix.lkl</b>:  the list that should be here "
                      "couldn't be loaded");
        EXPECT_TRUE(saved("other"));
        EXPECT_TRUE(saved("other"));
        startWith("temp.lst");
        EXPECT_EQ(rows(), 1);
        startWith("");
        EXPECT_EQ(rows(), 2);
        EXPECT_EQ(other.dataFile("mix.lkl"), mix);
        startWith("temp.lst");
        addAgain();
        startWith("temp.lst");
        other.files.broken = "";
        EXPECT_TRUE(saved("both"));
        EXPECT_EQ(rows(), 2);
        startWith("");
        other.owner("'listrmv c   ");
        startWith("");
        EXPECT_EQ(rows(), 1) << "what was beside the file is a part of another list";
    }
}

TEST_F(ListOnScreen, StaysWhenAnotherCantBeLoaded) {
    write("data/big.lkl", {"z.mp3"});
    breakFile("big.lkl");
    machine.start();
    const std::string said = "couldn't load playlist <b>big.lkl</b>:  the disk can't be read";
    EXPECT_EQ(machine.answer("'list big"), said);
    EXPECT_EQ(machine.answerTo([&] { machine.chooseFromTray("p1"); }), said);
    EXPECT_EQ(machine.answerTo([&] { chooseFromOps("loadlis", machine.drive("data/big.lkl")); }),
              said);
    EXPECT_EQ(machine.answer("'pl"), "temporarly playlist in use");
    EXPECT_EQ(namesAfterStart(), "a b ");
}

TEST_F(ListOnScreen, IsTheLastOneThatWasSavedWhenTheDiskIsFull) {
    machine.owner("'save mix");
    namesAfterStart();
    machine.owner("'listrmv b   ");
    machine.files.full = true;
    machine.forget();
    machine.owner("'exit");
    EXPECT_EQ(machine.allSaid().at(1),
              "couldn't save <b>playlist</b>:  no space left on the device");
    machine.files.full = false;
    machine.start();
    EXPECT_EQ(names(), "a b ");
}

struct Saving : ListOnScreen {
    Lines saidInAnyOrder() const {
        Lines said = machine.allSaid();
        std::sort(said.begin(), said.end());
        return said;
    }
};

TEST_F(Saving, UnderANameThatNoFileCanHaveIsSaidAndChangesNothing) {
    const std::string noName = "no file can have that name", longName(300, 'x');
    for (const auto& [name, reason] :
         std::map<std::string, std::string>{{"80s/90s", noName},
                                            {"..", noName},
                                            {"", noName},
                                            {"../x", noName},
                                            {longName, "the name is too long"}}) {
        EXPECT_EQ(machine.answer("'save " + name),
                  "couldn't save playlist <b>" + name + ".lkl</b>:  " + reason);
        EXPECT_EQ(machine.answer("'pl"), "temporarly playlist in use");
        EXPECT_EQ(machine.trayEntry("numl"), "0 playlists");
        EXPECT_EQ(namesAfterStart(), "a b ");
        EXPECT_EQ(namesAfterStart(), "a b ");
    }
}

TEST_F(Saving, MapsWhatOnlyAnotherSystemReserves) {
    for (const std::string name : {"mix: party", "a\\b", "what?", "<a|b>*", "\"x\"", "a\tb"}) {
        EXPECT_EQ(machine.answer("'save " + name),
                  "saved playlist <b>" + name + ".lkl</b>, <b>2</b> files");
        EXPECT_TRUE(fs::exists(machine.disk.path() / "data" / (name + ".lkl"))) << name;
        EXPECT_EQ(namesAfterStart(), "a b ");
        EXPECT_EQ(machine.answer("'save " + name),
                  "saved over original playlist <b>" + name + ".lkl</b>, <b>2</b> files");
    }
    EXPECT_EQ(machine.trayEntry("numl"), "6 playlists");
}

TEST_F(Saving, ThatFailsOnDiskIsSaid) {
    machine.owner("'save old");
    machine.owner("'listrmv b   ");
    machine.files.unwritable = ".lkl";
    for (const std::string name : {"new", "old"})
        EXPECT_EQ(machine.answer("'save " + name),
                  "couldn't save playlist <b>" + name + ".lkl</b>:  no space left on the device");
    EXPECT_EQ(machine.state().p, Lines{"old.lkl"});
    machine.files.unwritable = "";
    EXPECT_EQ(namesAfterStart(), "a ");
    EXPECT_EQ(machine.setting("playlist"), "old.lkl");
}

TEST_F(Saving, KeepsWhatAnotherHandHasAddedMeanwhile) {
    machine.owner("'sn old");
    machine.owner("'sn older");
    machine.restart();
    const std::string file = machine.dataFile("larkmain.lpb"), added = "by hand\r\n";
    machine.writeDataFile("larkmain.lpb", added + file.substr(file.find('\n') + 1));
    machine.restart(); // nothing has changed here
    EXPECT_EQ(machine.dataFile("larkmain.lpb"), added + file.substr(file.find('\n') + 1));
    machine.owner("'sn new");
    machine.writeDataFile("larkmain.lpb", added + added.substr(3) + file);
    machine.files.full = true;
    machine.chooseFromTray("rstartp"); // in vain
    machine.chooseFromTray("rstartp");
    machine.files.full = false;
    machine.restart();
    EXPECT_EQ(machine.answer("'notes?"), "total notes:  <b>5");
    machine.owner("'clrn");
    machine.restart();
    EXPECT_EQ(machine.answer("'notes?"), "total notes:  <b>0");
}

TEST_F(Saving, EmptiesNoFileByAListThatIsntKnown) {
    machine.owner("'save old");
    const std::string saved = machine.dataFile("old.lkl");
    EXPECT_EQ(namesAfterStart([&] {
                  breakFile("larkspin.ini");
                  fs::remove(machine.disk.path() / "data/temp.lst");
              }),
              "");
    EXPECT_EQ(machine.answer("'save old"), "couldn't save playlist <b>old.lkl</b>:  the list that "
                                           "should be here couldn't be loaded");
    EXPECT_EQ(machine.dataFile("old.lkl"), saved);
    add("c.mp3");
    EXPECT_EQ(machine.answer("'save new"), "saved playlist <b>new.lkl</b>, <b>1</b> files");
}

TEST_F(Saving, TellsOfADiskThatFailsNowAndThenOnceForEachAnswer) {
    machine.files.failEach = 3;
    machine.forget();
    machine.owner("'media?", 5s);
    const Lines said = machine.allSaid();
    EXPECT_GE(said.size(), 1);
    EXPECT_LT(said.size(), 10);
}

TEST_F(Saving, SaysEachFailureOnce) {
    machine.owner("'num 1");
    machine.files.full = true;
    machine.player.setCurrentPosition(179);
    const std::string full = ":  no space left on the device";
    const Lines said = machine.saidWithin(30s);
    EXPECT_EQ(said, (Lines{"couldn't save <b>play counts</b>" + full,
                           "couldn't save <b>settings</b>" + full}));
    EXPECT_EQ(machine.answer("'num 2"), "playing:  <b>2</b>.  b");
    machine.files.full = false;
    EXPECT_EQ(machine.answer("'num 2"), "playing:  <b>2</b>.  b");
    machine.files.full = true;
    machine.owner("'silent");
    machine.owner("'num 1", 1s);
    EXPECT_EQ(machine.lastBox(), "couldn't save settings" + full);
}

TEST_F(Saving, IsPrecededByWhatCouldntBeLoadedEachSaidOnce) {
    machine.endProcess();
    machine.forget();
    machine.files.unreadable = true;
    machine.start();
    const std::string unread = "</b>:  the disk can't be read";
    EXPECT_EQ(saidInAnyOrder(),
              (Lines{"couldn't load <b>applications n shit" + unread,
                     "couldn't load <b>notes" + unread, "couldn't load <b>play counts" + unread,
                     "couldn't load <b>playlist" + unread, "couldn't load <b>settings" + unread,
                     "larkspin player - by moraine", "load:  <b>1</b> - mp3s played:  <b>0</b>"}));
}

TEST_F(Saving, TellsWhatIsLostAtTheEnd) {
    machine.owner("'sn a note");
    machine.owner("'ap c:\\x, y");
    machine.files.full = true;
    machine.forget();
    machine.owner("'exit");
    const std::string full = ":  no space left on the device";
    EXPECT_EQ(saidInAnyOrder(),
              (Lines{"couldn't save <b>applications n shit</b>" + full,
                     "couldn't save <b>notes</b>" + full, "couldn't save <b>playlist</b>" + full,
                     "couldn't save <b>settings</b>" + full, "larkspin player - unload"}));
}

TEST_F(Saving, TellsWhatIsLostWhereTheRoomHearsNothing) {
    machine.files.unwritable = "larkmain.lpb";
    machine.owner("'sn a note");
    machine.endProcess();
    EXPECT_EQ(machine.notes, Lines{"larkspin: couldn't save notes:  no space left on the device"});
}

TEST_F(Saving, KeepsTheProgramFromARestartThatWouldLoseWords) {
    machine.owner("'sn a note");
    machine.files.unwritable = "larkmain.lpb";
    EXPECT_EQ(machine.answerTo([&] { machine.chooseFromTray("rstartp"); }),
              "restarting larkspin player\n"
              "couldn't save <b>notes</b>:  no space left on the device\n"
              "not restarted, what can't be saved would be lost");
    EXPECT_EQ(machine.answer("'notes?"), "total notes:  <b>1");
    machine.files.unwritable.clear();
    machine.chooseFromTray("rstartp");
    EXPECT_EQ(machine.answer("'notes?"), "total notes:  <b>1");
}

} // namespace
} // namespace larkspin
