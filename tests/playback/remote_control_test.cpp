#include "app/program.h"
#include "support/virtual_machine.h"

#include <cmath>
#include <gtest/gtest.h>
#include <utility>

namespace larkspin {

using Status = RemoteView::Status;
using Loop = RemoteView::Loop;

struct ARemoteControl : testing::Test {
    ARemoteControl() { machine.start(); }

    RemoteControl& remote() { return machine.program->playback.remote; }
    RemoteView view() { return remote().view(); }

    VirtualMachine machine{Lines{"ride.mp3", "high.mp3"}};
};

TEST_F(ARemoteControl, ShowsTheSongInPlayAndNothingWithoutOne) {
    EXPECT_EQ(view().name, "");
    EXPECT_EQ(view().status, Status::stopped);
    EXPECT_EQ(remote().position(), 0s);
    machine.player.told = {"Ride", "Jo", "Road"};
    machine.owner("'play ride", 10s);
    EXPECT_EQ(view().name, "ride");
    EXPECT_EQ(view().length, 180s);
    EXPECT_EQ(view().status, Status::playing);
    EXPECT_EQ(remote().position(), 10s);
    EXPECT_EQ(view().tags, machine.player.told);
}

TEST_F(ARemoteControl, WorksTheSongWithoutAWord) {
    using Hand = std::function<void(RemoteControl&)>;
    const std::pair<Hand, Status> steps[] = {
        {[](auto& r) { r.play(); }, Status::playing}, // what plays goes on playing
        {[](auto& r) { r.pause(); }, Status::paused},
        {[](auto& r) { r.pause(); }, Status::paused},
        {[](auto& r) { r.playOrPause(); }, Status::playing},
        {[](auto& r) { r.playOrPause(); }, Status::paused},
        {[](auto& r) { r.stop(); }, Status::stopped},
        {[](auto& r) { r.pause(); }, Status::stopped},
        {[](auto& r) { r.play(); }, Status::playing},
    };
    machine.owner("'play ride");
    machine.forget();
    for (const auto& [hand, status] : steps) {
        hand(remote());
        EXPECT_EQ(view().status, status);
    }
    EXPECT_EQ(machine.allSaid(), Lines{});
    EXPECT_EQ(machine.state().pauseMark, unpausedMark);
}

TEST_F(ARemoteControl, MovesWithinTheSongAndToOthers) {
    machine.owner("'play ride", 30s);
    remote().moveTo(100s);
    EXPECT_EQ(remote().position(), 100s);
    remote().moveBy(-20s);
    EXPECT_EQ(remote().position(), 80s);
    remote().moveBy(std::chrono::microseconds::min());
    EXPECT_EQ(remote().position(), 0s);
    remote().moveBy(std::chrono::microseconds::max());
    EXPECT_EQ(view().name, "high"); // after the end comes the next one
    remote().moveTo(180s);
    EXPECT_EQ(view().name, "high") << "its end is a place in it";
    remote().previous();
    EXPECT_EQ(view().name, "ride");
    remote().next();
    EXPECT_EQ(view().name, "high");
}

TEST_F(ARemoteControl, WorksTheSliders) {
    const std::pair<double, int> volumes[] = {{0.3, 30}, {1.5, 100}, {-1, 0}, {NAN, 0}};
    for (const auto& [share, shown] : volumes) {
        remote().setVolume(share);
        EXPECT_EQ(view().volume, shown);
    }
    remote().setTempo(1.25);
    EXPECT_EQ(view().tempo, 125);
    EXPECT_EQ(machine.state().tempoCaption, "       tempo:  125");
}

TEST_F(ARemoteControl, HasOneModeAtMost) {
    remote().setShuffle(true);
    EXPECT_TRUE(view().shuffle);
    remote().setLoop(Loop::none); // which isn't on
    EXPECT_TRUE(view().shuffle);
    remote().setLoop(Loop::list);
    EXPECT_FALSE(view().shuffle);
    EXPECT_EQ(machine.trayEntry("cintz"), "*continuous");
    remote().setLoop(Loop::song);
    EXPECT_EQ(view().loop, Loop::song);
    remote().setLoop(Loop::none);
    EXPECT_EQ(machine.trayEntry("rep"), "repeat");
}

} // namespace larkspin
