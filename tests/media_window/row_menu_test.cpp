// The menu of a row in the media window's list, and what else the keyboard does there.
#include "app/program.h"
#include "library/playlist_row.h"
#include "support/media_machine.h"

namespace larkspin {

namespace {

struct ARowMenu : testing::Test {
    void open(int row) {
        machine.run([&] { EXPECT_TRUE(askMenu(machine.mp3s(), "playlistView", row)); });
    }
    std::string captions() {
        std::string all;
        for (const MenuEntry& entry : machine.desktop.popup->entries())
            all += entry.caption + '|';
        return all;
    }
    RowList& rows() { return machine.state().playlistView; }

    MediaMachine machine{{"a.mp3", "b.mp3", "c.mp3"}};
};

} // namespace

TEST_F(ARowMenu, DoesToItsRowWhatTheWindowDoes) {
    open(1);
    EXPECT_EQ(captions(), "play|-|rename|delete|remove|-|show folder|");
    EXPECT_EQ(rows().currentIndex(), 1);
    EXPECT_EQ(machine.shown("fileCountLabel"), "2/3 files - 5bytes");
    EXPECT_EQ(machine.answerTo([&] { machine.chooseFromPopup("playrow"); }),
              "playing:  <b>2</b>.  b");
    EXPECT_EQ(machine.lastOpened(), "b.mp3");
    open(0);
    machine.dialogs.answers = {"z"};
    machine.chooseFromPopup("renrow");
    EXPECT_EQ(machine.titles(), (Lines{"b.mp3", "c.mp3", "z.mp3"}));
    open(2);
    machine.dialogs.answers = {"yes"};
    machine.chooseFromPopup("delrow");
    EXPECT_EQ(machine.lastBox(), "do you really wanna delete z?");
    EXPECT_EQ(machine.titles(), (Lines{"b.mp3", "c.mp3"}));
    open(1);
    machine.chooseFromPopup("remrow");
    EXPECT_EQ(machine.titles(), (Lines{"b.mp3"}));
    EXPECT_TRUE(exists(machine.disk.path() / "music/rock/c.mp3"));
    open(0);
    machine.chooseFromPopup("folrow");
    EXPECT_EQ(machine.launching.started, (Lines{"open " + machine.drive("music/rock")}));
}

TEST_F(ARowMenu, LeavesASelectionThatItsRowBelongsTo) {
    machine.run([&] { selectRows(machine.mp3s(), "playlistView", {2, 0}); });
    open(2);
    EXPECT_EQ(rows().currentIndex(), 2);
    EXPECT_NE(captions().find("|remove 2 rows|"), std::string::npos);
    machine.chooseFromPopup("remrow");
    EXPECT_EQ(machine.titles(), Lines{"b.mp3"});
    open(0);
    EXPECT_EQ(rows().selectedCount(), 1);
}

// While it is open songs come and go, and the owner's clicks reach other rows.
TEST_F(ARowMenu, MeansTheRowThatItWasOpenedOn) {
    open(1);
    machine.owner("'listrmv a  ");
    rows().choose(1);
    machine.chooseFromPopup("playrow");
    EXPECT_EQ(machine.lastOpened(), "b.mp3");
    open(1);
    machine.owner("'listrmv c  ");
    machine.chooseFromPopup("remrow");
    EXPECT_EQ(machine.titles(), Lines{"b.mp3"});
}

TEST_F(ARowMenu, TellsWhyAFolderIsntShown) {
    const std::string folder = machine.drive("music/rock");
    const std::pair<std::function<void()>, const char*> cases[] = {
        {[&] { machine.launching.works = false; }, "nothing here shows directories"},
        {[&] { machine.slowDisk.spans[folder] = 1min; }, "the disk doesn't answer"},
        {[&] {
             machine.slowDisk.spans.clear();
             remove_all(machine.disk.path() / "music/rock");
         },
         "there is no such directory"}};
    for (const auto& [harm, reason] : cases) {
        harm();
        open(0);
        machine.chooseFromPopup("folrow");
        EXPECT_EQ(machine.lastBox(), "couldn't open " + folder + ":  " + reason);
    }
}

TEST_F(ARowMenu, IsNoneWithoutARowAndEscapeLeavesOneSelected) {
    EXPECT_FALSE(askMenu(machine.mp3s(), "playlistView"));
    const auto strikeEscape = [&] { pressKey(machine.mp3s(), "playlistView", Key::escape); };
    rows().setSelected(0, true);
    strikeEscape();
    EXPECT_EQ(rows().selectedCount(), 0) << "there is no current row";
    selectRows(machine.mp3s(), "playlistView", {0, 1, 2});
    strikeEscape();
    EXPECT_EQ(rows().selectedCount(), 1);
    EXPECT_TRUE(rows().isSelected(2));
}

} // namespace larkspin
