// What a front end shows of the song in play, and what the owner does with it there.
#include "playback/song_in_play.h"

#include "app/program.h"
#include "playback/time_forms.h"
#include "support/media_machine.h"

namespace larkspin {

namespace {

using SongStatus = SongView::Status;

struct ASongInPlay : testing::Test {
    SongInPlay& song() { return machine.program->playback.songInPlay; }
    SongView view() { return song().view(); }
    void work(void (SongInPlay::*operation)()) {
        machine.run([&] { (song().*operation)(); });
    }

    MediaMachine machine{{"a.mp3", "b.mp3", "c.mp3"}};
};

} // namespace

TEST_F(ASongInPlay, ShowsWhatThereIsToSee) {
    struct Step {
        const char *line, *title, *time;
        SongStatus status;
        int row;
    };
    const Step steps[] = {
        {"'stop", "nothing plays", "", SongStatus::stopped, -1},
        {"'play b", "b", "0:07 / 1:40", SongStatus::playing, 1},
        {"'pause", "b", "0:07 / 1:40", SongStatus::paused, 1},
        {"'next", "c", "0:07 / 1:40", SongStatus::playing, 2},
        {"'stop", "c", "", SongStatus::stopped, -1},
        {"'play", "c", "0:07 / 1:40", SongStatus::playing, 2},
        {"'listrmv b  ", "c", "0:14 / 1:40", SongStatus::playing, 1},
        {"'listrmv c  ", "c", "0:21 / 1:40", SongStatus::playing, -1},
    };
    for (const Step& step : steps) {
        SCOPED_TRACE(step.line);
        machine.owner(step.line, 7s);
        EXPECT_EQ(view().title(), step.title);
        EXPECT_EQ(view().timeAt(view().position), step.time);
        EXPECT_EQ(view().status, step.status);
        EXPECT_EQ(song().row(), step.row);
    }
}

TEST_F(ASongInPlay, IsMarkedInTheListAlsoAsAChoiceAndNotFromElsewhere) {
    machine.owner("'play 3", 1s);
    machine.owner("'play mp3", 3s); // several
    machine.owner("'num 2", 1s);
    EXPECT_EQ(machine.mp3s().control("playlistView").markedRow(), 1);
    machine.disk.write("else/b.mp3", "song");
    machine.player.lengths[machine.drive("else/b.mp3")] = 100;
    machine.dialogs.answers = {machine.drive("else/b.mp3")};
    machine.press("openButton");
    EXPECT_EQ(song().row(), -1);
    EXPECT_EQ(view().title(), "b");
}

// What a name holds is seen as it is, and nothing in it steers what shows it.
TEST_F(ASongInPlay, BearsItsRealName) {
    for (const auto& [name, title] : {std::pair("Who Made Who?", "Who Made Who?"),
                                      {"a\u202Eb", "a\uFFFDb"},
                                      {"one.two: <b>", "one.two: <b>"}}) {
        machine.disk.write(std::string("else/") + name + ".mp3", "song");
        const std::string path = machine.drive(std::string("else/") + name + ".mp3");
        machine.player.lengths[path] = 3725;
        machine.dialogs.answers = {path};
        machine.press("openButton");
        EXPECT_EQ(view().title(), title);
        EXPECT_EQ(view().timeAt(3600), "60:00 / 62:05");
    }
}

// By the buttons; nothing is said, but for a file that is gone.
TEST_F(ASongInPlay, IsWorkedWithoutAWord) {
    machine.owner("'play a", 20s);
    const std::pair<void (SongInPlay::*)(), const char*> steps[] = {
        {&SongInPlay::playOrPause, "a, paused"},
        {&SongInPlay::playOrPause, "a"},
        {&SongInPlay::next, "b"},
        {&SongInPlay::previous, "a"},
        {&SongInPlay::previous, "c"},
        {&SongInPlay::playOrPause, "c, paused"},
        {&SongInPlay::next, "a"}};
    machine.forget();
    for (const auto& [operation, title] : steps) {
        work(operation);
        EXPECT_EQ(view().title() + (view().status == SongStatus::paused ? ", paused" : ""), title);
    }
    EXPECT_EQ(machine.allSaid(), Lines{});
    machine.run([&] { machine.program->playback.remote.stop(); });
    work(&SongInPlay::playOrPause);
    EXPECT_EQ(view().status, SongStatus::playing) << "the song started last";
    std::filesystem::remove(machine.disk.path() / "music/rock/b.mp3");
    work(&SongInPlay::next);
    EXPECT_EQ(machine.said(), machine.notFound());
}

TEST_F(ASongInPlay, BeginsWithTheFirstSongIfNoneWasEverPlayed) {
    EXPECT_TRUE(view().canPlay());
    work(&SongInPlay::playOrPause);
    EXPECT_EQ(view().title(), "a");
    machine.owner("'stop");
    machine.run([&] { machine.program->library.removing.removeAll(); });
    EXPECT_FALSE(view().hasList);
    EXPECT_TRUE(view().canPlay()) << "the one started last";
    MediaMachine other{Lines{}};
    const SongView empty = other.program->playback.songInPlay.view();
    EXPECT_EQ(empty.title(), "no songs yet");
    EXPECT_FALSE(empty.canPlay());
}

TEST_F(ASongInPlay, IsMovedWithinItselfAlone) {
    machine.owner("'play a", 5s);
    const std::string path = view().path;
    for (const auto& [second, reached] : {std::pair(60, 60), {-5, 0}, {1000, 100}}) {
        song().moveTo(second, path);
        EXPECT_EQ(view().position, reached);
    }
    machine.owner("'play b", 5s);
    song().moveTo(60, path);
    EXPECT_EQ(view().position, 5) << "another song has begun";
}

TEST_F(ASongInPlay, HasOneModeOrNoneAndAVolume) {
    const Menu menu = song().modeMenu();
    for (const MenuEntry& entry : menu.entries()) {
        entry.action();
        EXPECT_EQ(wordFor(view().mode), entry.caption);
        int checked = 0;
        for (const MenuEntry& now : menu.entries())
            checked += now.checked;
        EXPECT_EQ(checked, 1);
    }
    EXPECT_EQ(machine.trayEntry("cintz"), "*continuous");
    song().setMode(PlayMode::none);
    EXPECT_EQ(machine.trayEntry("cintz"), "continuous");
    for (const auto& [wanted, volume] : {std::pair(30, 30), {1000, 100}, {-1, 0}}) {
        song().setVolume(wanted);
        EXPECT_EQ(view().volume, volume);
    }
    EXPECT_TRUE(machine.player.mute);
}

// The name stays while the next song of a mode is looked for.
TEST_F(ASongInPlay, PlaysOnBetweenTwoSongs) {
    machine.owner("'play a", 1s);
    song().setMode(PlayMode::continuous);
    for (int step = 0; step < 1100; ++step) {
        machine.advance(100ms);
        ASSERT_EQ(view().status, SongStatus::playing) << step;
    }
    EXPECT_EQ(view().title(), "b");
}

} // namespace larkspin
