// The list on screen is there again at the next start, whatever has become of its file.
#include "library/playlists.h"

#include <algorithm>

namespace larkspin {
namespace {

namespace fs = std::filesystem;

struct ListOnScreen : testing::Test {
    void add(const std::string& song) {
        machine.song("pop", song);
        machine.owner("'scan " + machine.drive("music/pop"));
        machine.owner("'transfer");
    }
    std::string namesAfterStart(const std::function<void()>& between = [] {}) {
        if (machine.program)
            machine.endProcess();
        between();
        machine.start();
        std::string found;
        for (const std::string& title : machine.titles())
            found += title.substr(0, title.find('.')) + ' ';
        return found;
    }
    std::string namesAfterStartWithout(const std::string& file) {
        return namesAfterStart([&] { machine.files.broken = file; });
    }
    // Why a save under that name is refused; nothing if it isn't.
    std::string refusal(const std::string& name) {
        const std::string answer = machine.answer("'save " + name);
        return answer.starts_with("couldn't") ? answer.substr(answer.find(":  ") + 3) : "";
    }
    Lines saidInAnyOrder() const {
        Lines said = machine.allSaid();
        std::sort(said.begin(), said.end());
        return said;
    }
    PlaylistMachine machine;
};

const std::string unreadable = "the disk can't be read", noSpace = "no space left on the device",
                  unloaded = "the list that should be here couldn't be loaded";

TEST_F(ListOnScreen, ComesBackWithoutANameThoughOneWasSavedBefore) {
    machine.owner("'save mix");
    EXPECT_EQ(namesAfterStart(), "a b ");
    machine.chooseFromOps("nlis", "yes");
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
        machine.writeList("stick/far.lkl", {"z.mp3"});
        if (hasNamesake)
            machine.writeList("data/far.lkl", {"other.mp3"});
        machine.chooseFromOps("loadlis", machine.drive("stick/far.lkl"));
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
    machine.files.broken = "mix.lkl"; // so that nobody can tell whether it holds the list
    EXPECT_EQ(namesAfterStart(), "a c ");
    machine.files.broken = "";
    EXPECT_EQ(namesAfterStart([&] { machine.writeDataFile("mix.lkl", saved); }), "a b ");
    fs::remove(machine.disk.path() / "data/mix.lkl");
    EXPECT_EQ(namesAfterStart(), "a b ");
}

TEST_F(ListOnScreen, OfAFileThatCantBeReadIsWhatHasComeSince) {
    machine.owner("'save mix");
    const std::string saved = machine.dataFile("mix.lkl");
    EXPECT_EQ(namesAfterStartWithout("mix.lkl"), "");
    EXPECT_SAID(machine, "couldn't load playlist <b>mix.lkl</b>:  " + unreadable);
    EXPECT_EQ(namesAfterStart(), "");
    EXPECT_EQ(refusal("mix"), unreadable);
    EXPECT_EQ(refusal("other"), unloaded);
    EXPECT_FALSE(machine.exists("data/other.lkl"));
    add("c.mp3");
    EXPECT_EQ(refusal("mix"), unreadable);
    EXPECT_EQ(namesAfterStart(), "c ");
    EXPECT_EQ(machine.dataFile("mix.lkl"), saved);
    EXPECT_EQ(namesAfterStartWithout(""), "a b c ");
    EXPECT_EQ(machine.dataFile("mix.lkl"), saved);
    machine.owner("'save mix");
    EXPECT_EQ(namesAfterStart(), "a b c ");
}

TEST_F(ListOnScreen, IsJoinedByItsFileThatCanBeReadAgain) {
    machine.owner("'save mix");
    EXPECT_EQ(namesAfterStartWithout("mix.lkl"), "");
    add("c.mp3");
    machine.files.broken = "";
    EXPECT_EQ(machine.answer("'save mix"),
              "saved over original playlist <b>mix.lkl</b>, <b>3</b> files");
    EXPECT_EQ(namesAfterStart(), "a b c ");
}

TEST_F(ListOnScreen, WithoutANameOutlivesAFileThatCantBeRead) {
    EXPECT_EQ(namesAfterStartWithout("temp.lst"), "");
    add("c.mp3");
    EXPECT_EQ(namesAfterStart(), "c ");
    EXPECT_EQ(namesAfterStartWithout(""), "a b c ");
    EXPECT_EQ(namesAfterStart(), "a b c ");
    EXPECT_FALSE(machine.exists("data/temp.lst.rescued"));
}

// The file of a list without a name holds the list, or what one with a name has been changed to.
struct EitherList : ListOnScreen, testing::WithParamInterface<bool> {};
INSTANTIATE_TEST_SUITE_P(WithOrWithoutAName, EitherList, testing::Bool());

TEST_P(EitherList, ThatCouldntBeLoadedIsNotSavedOverNorLeftBehindByASave) {
    if (GetParam())
        machine.owner("'save mix");
    const std::string mix = machine.dataFile("mix.lkl");
    machine.owner("'listrmv b   ");
    EXPECT_EQ(namesAfterStartWithout("temp.lst"), "");
    EXPECT_EQ(refusal("mix"), unloaded);
    EXPECT_EQ(refusal("other"), unloaded);
    EXPECT_EQ(machine.dataFile("mix.lkl"), mix);
    add("c.mp3");
    if (GetParam())
        EXPECT_EQ(refusal("mix"), unloaded);
    EXPECT_EQ(refusal("other"), "");
    EXPECT_EQ(refusal("other"), "");
    EXPECT_EQ(namesAfterStart(), "c ");
    EXPECT_EQ(namesAfterStartWithout(""), "a c ");
    EXPECT_EQ(machine.dataFile("mix.lkl"), mix);
    namesAfterStartWithout("temp.lst");
    add("c.mp3");
    namesAfterStart();
    machine.files.broken = "";
    EXPECT_EQ(refusal(GetParam() ? "both" : "other"), "") << "by a new name or its own";
    EXPECT_EQ(namesAfterStart(), "a c ");
    machine.owner("'listrmv c   ");
    EXPECT_EQ(namesAfterStart(), "a ") << "what was beside the file is a part of another list";
}

TEST_F(ListOnScreen, StaysWhenAnotherCantBeLoaded) {
    machine.writeList("data/big.lkl", {"z.mp3"});
    namesAfterStartWithout("big.lkl");
    const std::string said = "couldn't load playlist <b>big.lkl</b>:  " + unreadable;
    EXPECT_EQ(machine.answer("'list big"), said);
    EXPECT_EQ(machine.answerTo([&] { machine.chooseFromTray("p1"); }), said);
    EXPECT_EQ(machine.chooseFromOps("loadlis", machine.drive("data/big.lkl")), said);
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
    EXPECT_EQ(machine.allSaid().at(1), "couldn't save <b>playlist</b>:  " + noSpace);
    machine.files.full = false;
    EXPECT_EQ(namesAfterStart(), "a b ");
}

using Saving = ListOnScreen;

TEST_F(Saving, ThatFailsOnDiskIsSaid) {
    machine.says({"'save old", "'listrmv b   "});
    machine.files.unwritable = ".lkl";
    for (const char* name : {"new", "old"})
        EXPECT_EQ(refusal(name), noSpace);
    EXPECT_EQ(machine.state().p, Lines{"old.lkl"});
    machine.files.unwritable = "";
    EXPECT_EQ(namesAfterStart(), "a ");
    EXPECT_EQ(machine.setting("playlist"), "old.lkl");
}

TEST_F(Saving, KeepsWhatAnotherHandHasAddedMeanwhile) {
    machine.says({"'sn old", "'sn older"});
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
                  machine.files.broken = "larkspin.ini";
                  fs::remove(machine.disk.path() / "data/temp.lst");
              }),
              "");
    EXPECT_EQ(refusal("old"), unloaded);
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
    const std::string full = ":  " + noSpace;
    const Lines said = machine.saidWithin(30s);
    EXPECT_EQ(said, (Lines{"couldn't save <b>play counts</b>" + full,
                           "couldn't save <b>settings</b>" + full}));
    for (const bool isFull : {true, false, true}) {
        machine.files.full = isFull;
        EXPECT_EQ(machine.answer("'num 2"), "playing:  <b>2</b>.  b");
    }
    machine.owner("'silent");
    machine.owner("'num 1", 1s);
    EXPECT_EQ(machine.lastBox(), "couldn't save settings" + full);
}

TEST_F(Saving, IsPrecededByWhatCouldntBeLoadedEachSaidOnce) {
    machine.endProcess();
    machine.forget();
    machine.files.unreadable = true;
    machine.start();
    const std::string unread = "</b>:  " + unreadable;
    EXPECT_EQ(saidInAnyOrder(),
              (Lines{"couldn't load <b>applications n shit" + unread,
                     "couldn't load <b>notes" + unread, "couldn't load <b>play counts" + unread,
                     "couldn't load <b>playlist" + unread, "couldn't load <b>settings" + unread,
                     "larkspin player - by moraine", "load:  <b>1</b> - mp3s played:  <b>0</b>"}));
}

TEST_F(Saving, TellsWhatIsLostAtTheEnd) {
    machine.says({"'sn a note", "'ap c:\\x, y"});
    machine.files.full = true;
    machine.forget();
    machine.owner("'exit");
    const std::string full = ":  " + noSpace;
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
