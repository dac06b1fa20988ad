// The five buttons for playing, pressed as the owner does.
#include "shell/window.h"
#include "support/media_machine.h"

#include <set>

namespace larkspin {

TEST(TransportButtons, GoThroughTheListWithoutAWord) {
    MediaMachine machine;
    machine.work({{"prevButton", "", "c.mp3"},
                  {"nextButton", "", "a.mp3"},
                  {"nextButton", "", "b.mp3"},
                  {"prevButton", "", "a.mp3"},
                  {"'repeat", "repeat - <b>on"}});
    EXPECT_EQ(machine.setting("play"), "a.mp3");
    EXPECT_EQ(machine.player.volume, -1500);
    EXPECT_EQ(machine.trayEntry("playtz"), "played 0 times") << "the count that is stored";
    EXPECT_EQ(machine.saidWithin(101s), Lines{"repeat:  a"});
    std::filesystem::remove(machine.disk.path() / "music/rock/b.mp3");
    machine.work({{"nextButton", machine.notFound(), "a.mp3"},
                  {"'silent", "silent mode - <b>on"},
                  {"nextButton", "", "c.mp3"}});
}

TEST(TransportButtons, FindNothingInAnEmptyList) {
    MediaMachine machine(Lines{});
    machine.work({{"prevButton", "not found, refresh the directory (\\)"},
                  {"playButton", "[box] nothing to play dumbass"},
                  {"'shuffle", "shuffled play - <b>on"},
                  {"nextButton", "[box] no mp3s found, stupid"}});
}

TEST(TransportButtons, NextIsRandomInAShuffle) {
    MediaMachine machine;
    machine.owner("'shuffle");
    std::set<std::string> songs;
    for (int press = 0; press < 3; ++press) {
        machine.work({{"nextButton", ""}});
        songs.insert(machine.setting("play"));
        EXPECT_EQ(machine.setting("play"), machine.lastOpened());
    }
    EXPECT_EQ(songs.size(), 3u);
    machine.says({"'play ", "'view"});
    machine.work({{"pauseButton", ""}, {"nextButton", ""}});
    EXPECT_FALSE(machine.window("larkmain").visible) << "no choice is on show any longer";
    EXPECT_EQ(machine.shown("pauseButton"), "  II");
    EXPECT_EQ(machine.saidWithin(101s).size(), 1u) << "the shuffle goes on";
}

TEST(TransportButtons, PauseAndStopWhateverPlays) {
    MediaMachine machine;
    const auto mark = [&] { return machine.shown("pauseButton"); };
    machine.press("pauseButton");
    EXPECT_EQ(mark(), "  \u00B3") << "with nothing playing";
    machine.work({{"'num 2", "playing:  <b>2</b>.  b"},
                  {"pauseButton", ""},
                  {"'pause", "already paused you dumbass"}});
    EXPECT_EQ(machine.player.PlayState(), PlayState::paused);
    machine.work({{"pauseButton", ""}, {"'resume", "already playing something you dick"}});
    EXPECT_EQ(machine.player.PlayState(), PlayState::playing);
    machine.work({{"pauseButton", ""}, {"playButton", ""}});
    EXPECT_EQ(machine.player.PlayState(), PlayState::stopped);
    EXPECT_EQ(mark(), "  II");
    machine.work({{"pauseButton", ""}, {"playButton", "", "b.mp3"}});
    EXPECT_EQ(mark(), "  II");
    machine.press("playButton");
    std::filesystem::remove(machine.disk.path() / "music/rock/b.mp3");
    machine.work({{"playButton", machine.notFound()}});
    EXPECT_EQ(machine.shown("playButton"), "  l>");
}

TEST(TransportButtons, OpenAFileThatIsOnNoList) {
    MediaMachine machine(Lines{"a.mp3"});
    machine.song("new", "Found.wav", 10s);
    machine.owner("'num 1");
    machine.player.volume = 1;
    machine.work({{"openButton", "", "a.mp3"}}); // dismissed
    const std::string gone = machine.drive("music/new/gone.wav");
    machine.dialogs.answers = {gone};
    machine.work(
        {{"openButton", "[box] couldn't open " + gone + ":  there is no such file", "a.mp3"}});
    machine.dialogs.answers = {machine.drive("music/new/Found.wav")};
    machine.dialogs.whileOpen = [&] { machine.press("closeButton"); };
    machine.work({{"openButton", "playing:  Found", "Found.wav"}});
    EXPECT_EQ(machine.dialogs.fileQuestion.title, "Open a media file");
    EXPECT_FALSE(machine.mp3s().visible) << "as it was left meanwhile";
    EXPECT_EQ(machine.player.volume, 1) << "no volume is sent";
    EXPECT_EQ(machine.trayEntry("playtz"), "played n/a times");
    EXPECT_EQ(machine.setting("play"), "a.mp3");
    machine.work({{"'pause", "paused:  Found"},
                  {"'resume", "resumed:  Found"},
                  {"'repeat", "repeat - <b>on"}});
    EXPECT_EQ(machine.saidWithin(11s), Lines{"repeat:  Found"});
    machine.owner("'media");
    machine.work({{"playButton", ""}, {"playButton", "", "a.mp3"}, {"'pause", "paused:  a"}});
    machine.dialogs.whileOpen = [] {};
    machine.dialogs.answers = {machine.drive("music/new/Found.wav")};
    machine.work({{"openButton", "playing:  Found", "Found.wav"}, // the mark of the pause stands
                  {"'cont", "continuous play - <b>on"}});
    EXPECT_EQ(machine.saidWithin(11s), Lines{"next:  <b>1</b>.  a"});
    machine.work({{"'pause", "already paused you dumbass"}, {"'repeat", "repeat - <b>on"}});
    EXPECT_EQ(machine.saidWithin(100s), Lines{"repeat:  a"});
    machine.work({{"'pause", "already paused you dumbass"}, {"'shuffle", "shuffled play - <b>on"}});
    std::filesystem::remove(machine.disk.path() / "music/rock/a.mp3");
    machine.dialogs.answers = {machine.drive("music/new/Found.wav")};
    machine.work({{"openButton", "playing:  Found", "Found.wav"},
                  {"nextButton", machine.notFound(), "Found.wav"}});
    EXPECT_EQ(machine.player.PlayState(), PlayState::paused) << "as marked until now";
}

} // namespace larkspin
