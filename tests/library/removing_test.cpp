#include "library/playlist_row.h"
#include "shell/control_events.h"
#include "support/talk.h"

namespace larkspin {

namespace {

struct RemovingTest : testing::Test {
    RemovingTest() {
        machine.writeDataFile("temp.lst", machine.song("rock", "One.mp3") + "\r\n" +
                                              machine.song("rock", "two.mp3") + "\r\n" +
                                              machine.song("pop", "rocket.wav") + "\r\n" +
                                              machine.song("pop", "six.mp3"));
        machine.start();
        mp3s().visible = true;
        machine.state().playedMemory.add("six.mp3");
        machine.forget();
    }

    Window& mp3s() { return machine.window("mp3s"); }
    void chooseFromEditMenu(const std::string& entry) {
        machine.click("mp3s", "Command2");
        machine.chooseFromPopup(entry);
    }
    // The names in both lists, which must be the same rows; both counts are shown.
    Lines names() {
        const AppState& state = machine.state();
        const std::string count = std::to_string(state.masterList.count()) + " files";
        Lines found;
        for (int index = 0; index < state.masterList.count(); ++index) {
            found.emplace_back(rowname(state.masterList.row(index)));
            EXPECT_EQ(state.masterList.row(index), state.playlistView.row(index));
        }
        EXPECT_EQ(state.playlistView.count(), state.masterList.count());
        EXPECT_EQ(mp3s().control("fileCountLabel").text(), count);
        EXPECT_EQ(machine.trayEntry("mp3z"), "view " + count);
        return found;
    }

    VirtualMachine machine;
};

} // namespace

TEST_F(RemovingTest, TakesOutWhateverHoldsTheText) {
    converse(machine, {Turn("'listrmv e.mp", "removed <b>0</b> items for <b>e.mp</b> (<b>4</b>)"),
                       Turn("'listrmv SIX", "removed <b>1</b> items for <b>SIX</b> (<b>3</b>)")});
    EXPECT_EQ(names(), (Lines{"One", "rocket", "two"}));
    EXPECT_EQ(machine.answer("'listrmv \\Rock"),
              "removed <b>2</b> items for <b>\\Rock</b> (<b>1</b>)");
    EXPECT_EQ(names(), Lines{"rocket"});
    for (const std::string slip : {"", "  "}) // which stand in every row
        EXPECT_EQ(machine.answer("'listrmv " + slip),
                  "removed <b>0</b> items for <b>" + slip + "</b> (<b>1</b>)");
    EXPECT_EQ(names(), Lines{"rocket"});
    EXPECT_EQ(machine.state().playedMemory.count(), 1);
    EXPECT_EQ(machine.disk.read("music/rock/One.mp3"), "sound");
    machine.state().silnt = true;
    EXPECT_EQ(machine.answer("'listrmv "), "[box] scanning");
}

TEST_F(RemovingTest, TakesTheSelectedFilesOut) {
    machine.owner("'num 2"); // rocket
    chooseFromEditMenu("remfil");
    EXPECT_EQ(machine.lastBox(), "No items selected");
    selectRows(mp3s(), "playlistView", {0, 2, 3});
    chooseFromEditMenu("remfil");
    EXPECT_EQ(names(), Lines{"rocket"});
    EXPECT_EQ(machine.state().masterIndex(), 0) << "stays with its row";
    EXPECT_TRUE(machine.state().playedMemory.empty());
}

TEST_F(RemovingTest, OfSelectedFilesGoesOnAfterALineThatComesBetween) {
    selectRows(mp3s(), "playlistView", {0, 2, 3});
    machine.loop.post([&] { machine.hear("'listrmv rock"); });
    chooseFromEditMenu("remfil");
    EXPECT_EQ(names(), Lines{});
}

TEST_F(RemovingTest, EmptiesThePlaylistWithoutAQuestion) {
    EXPECT_EQ(machine.answerTo([&] { chooseFromEditMenu("remal"); }), "");
    EXPECT_EQ(names(), Lines{});
    EXPECT_TRUE(machine.state().playedMemory.empty());
}

TEST_F(RemovingTest, AsksForAStringBehindTheSplash) {
    machine.loop.once(100ms, [&] { EXPECT_FALSE(mp3s().visible); });
    machine.dialogs.answers = {"Rock"};
    chooseFromEditMenu("remstr");
    EXPECT_EQ(machine.dialogs.titles, Lines{"string remover"});
    EXPECT_EQ(machine.lastBox(), "what string would you like to remove to the playlist?");
    EXPECT_TRUE(mp3s().visible);
    chooseFromEditMenu("remstr"); // dismissed
    EXPECT_EQ(names(), Lines{"six"});
    EXPECT_TRUE(machine.state().playedMemory.empty());
}

} // namespace larkspin
