#include "app/program.h"
#include "support/talk.h"

#include <set>

namespace larkspin {

TEST(RandomPick, FindsAWayOutWhenTwoSongsBearOneName) {
    VirtualMachine machine;
    machine.writeDataFile("temp.lst", machine.song("pop", "x.mp3") + "\r\n" +
                                          machine.song("rock", "X.mp3") + "\r\n" +
                                          machine.song("rock", "y.mp3") + "\r\n");
    machine.start();
    std::map<std::string, int> said;
    for (int turn = 0; turn < 100; ++turn)
        ++said[machine.answer("'rnd")];
    EXPECT_EQ(said.size(), 3u);
    EXPECT_GE(said["random:  <b>3</b>.  y"], 45) << "each round is y and one of the others";
}

TEST(RandomPick, BeginsANewRoundOnceEachSongHasHadItsTurn) {
    VirtualMachine machine({"a.mp3", "b.mp3"});
    AppState& state = machine.state();
    // What is remembered, and how much of it after the pick.
    const std::pair<Lines, int> cases[] = {
        {{}, 1}, {{"a.mp3"}, 0}, {{"a.mp3", "b.mp3", "gone.mp3"}, 1}};
    for (const auto& [remembered, then] : cases) {
        state.playedMemory.clear();
        for (const std::string& title : remembered)
            state.playedMemory.add(title);
        state.pickHits = "1";
        machine.owner("'rnd");
        EXPECT_EQ(state.playedMemory.count(), then);
    }
    EXPECT_EQ(state.pickHits, "0");
}

TEST(RandomPick, GivesEachSongThatIsLeftTheSameChance) {
    VirtualMachine empty(Lines{});
    EXPECT_EQ(empty.answer("'rnd"), "no mp3s found, stupid");
    empty.program->playback.randomPick.randompick([] { return true; });
    empty.state().silnt = true;
    EXPECT_EQ(empty.answer("'rnd"), "[box] no mp3s found, stupid");
    const Lines names{"a.mp3", "b.mp3", "c.mp3", "d.mp3", "e.mp3", "f.mp3", "g.mp3", "h.mp3"};
    VirtualMachine machine(names);
    machine.files.full = true; // nothing here needs the disk
    for (const int left : {2, 8}) {
        std::map<int, int> picked;
        for (int turn = 0; turn < 4000; ++turn) {
            machine.state().playedMemory.clear();
            for (auto name = names.begin() + left; name != names.end(); ++name)
                machine.state().playedMemory.add(*name);
            machine.program->playback.randomPick.randompick([] { return true; });
            ++picked[machine.state().masterIndex()];
        }
        for (int row = 0; row < 8; ++row)
            EXPECT_NEAR(picked[row], row < left ? 4000 / left : 0, row < left ? 100 : 0) << row;
    }
    machine.loop.post([&] { machine.state().playedMemory.clear(); }); // before the first try
    machine.program->playback.randomPick.randompick([] { return true; });
    EXPECT_EQ(machine.state().playedMemory.count(), 1);
    AppState& state = machine.state();
    std::set<std::string> meetings; // of remembered songs among the hits of a search
    for (int turn = 0; turn < 400; ++turn) {
        state.playedMemory.clear();
        for (const int row : {0, 1})
            state.playedMemory.add(state.masterList.share(row));
        state.pickHits = "0";
        machine.owner("'rnd ");
        EXPECT_GT(state.play, "b.mp3");
        meetings.insert(state.pickHits);
    }
    EXPECT_GT(meetings.size(), 1u);
}

} // namespace larkspin
