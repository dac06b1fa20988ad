#include "library/playlist.h"
#include "support/media_machine.h"

namespace larkspin {

struct RemovingTest : testing::Test {
    RemovingTest() : machine(Lines{}) {
        for (const auto& [directory, name] : {std::pair("rock", "One.mp3"),
                                              {"rock", "two.mp3"},
                                              {"pop", "rocket.wav"},
                                              {"pop", "six.mp3"}})
            addToPlaylist(machine.state(), Row(machine.song(directory, name)));
        machine.state().playedMemory.add("six.mp3");
    }
    // What is left in the list, whose size is shown.
    Lines left() {
        const Lines titles = machine.titles();
        const std::string count = std::to_string(titles.size()) + " files";
        EXPECT_EQ(machine.shown("fileCountLabel"), count);
        EXPECT_EQ(machine.trayEntry("mp3z"), "view " + count);
        return titles;
    }

    MediaMachine machine;
};

TEST_F(RemovingTest, TakesOutWhateverHoldsTheText) {
    converse(machine, {Turn("'listrmv e.mp", "removed <b>0</b> items for <b>e.mp</b> (<b>4</b>)"),
                       Turn("'listrmv SIX", "removed <b>1</b> items for <b>SIX</b> (<b>3</b>)")});
    EXPECT_EQ(left(), (Lines{"One.mp3", "rocket.wav", "two.mp3"}));
    EXPECT_EQ(machine.answer("'listrmv \\Rock"),
              "removed <b>2</b> items for <b>\\Rock</b> (<b>1</b>)");
    EXPECT_EQ(left(), Lines{"rocket.wav"});
    for (const std::string slip : {"", "  "}) // which stand in every row
        EXPECT_EQ(machine.answer("'listrmv " + slip),
                  "removed <b>0</b> items for <b>" + slip + "</b> (<b>1</b>)");
    EXPECT_EQ(left(), Lines{"rocket.wav"});
    EXPECT_EQ(machine.state().playedMemory.count(), 1);
    EXPECT_EQ(machine.disk.read("music/rock/One.mp3"), "sound");
    machine.state().silnt = true;
    EXPECT_EQ(machine.answer("'listrmv "), "[box] scanning");
}

TEST_F(RemovingTest, TakesTheSelectedFilesOut) {
    machine.owner("'num 2"); // rocket
    machine.choose("Command2", "remfil");
    EXPECT_EQ(machine.lastBox(), "No items selected");
    selectRows(machine.mp3s(), "playlistView", {0, 2, 3});
    machine.choose("Command2", "remfil");
    EXPECT_EQ(left(), Lines{"rocket.wav"});
    EXPECT_EQ(machine.state().masterIndex(), 0) << "stays with its row";
    EXPECT_TRUE(machine.state().playedMemory.empty());
}

TEST_F(RemovingTest, OfSelectedFilesGoesOnAfterALineThatComesBetween) {
    selectRows(machine.mp3s(), "playlistView", {0, 2, 3});
    machine.loop.post([&] { machine.hear("'listrmv rock"); });
    machine.choose("Command2", "remfil");
    EXPECT_EQ(left(), Lines{});
}

TEST_F(RemovingTest, EmptiesThePlaylistWithoutAQuestion) {
    EXPECT_EQ(machine.answerTo([&] { machine.choose("Command2", "remal"); }), "");
    EXPECT_EQ(left(), Lines{});
    EXPECT_TRUE(machine.state().playedMemory.empty());
}

TEST_F(RemovingTest, AsksForAStringBehindTheSplash) {
    machine.loop.once(100ms, [&] { EXPECT_FALSE(machine.mp3s().visible); });
    machine.dialogs.answers = {"Rock"};
    machine.choose("Command2", "remstr");
    EXPECT_EQ(machine.dialogs.titles, Lines{"string remover"});
    EXPECT_EQ(machine.lastBox(), "what string would you like to remove to the playlist?");
    EXPECT_TRUE(machine.mp3s().visible);
    machine.choose("Command2", "remstr"); // dismissed
    EXPECT_EQ(left(), Lines{"six.mp3"});
    EXPECT_TRUE(machine.state().playedMemory.empty());
}

} // namespace larkspin
