// What a newcomer is told, and what adds his music.
#include "app/first_steps.h"
#include "app/program.h"
#include "host/preferences.h"
#include "support/virtual_machine.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

struct FirstStepsTest : testing::Test {
    FirstStepsTest() { preferences.lookIn({.music = machine.drive("music")}); }
    void begin() {
        machine.start();
        steps.emplace(*machine.program, preferences);
        steps->begin();
        machine.advance(1s);
    }
    void addMusic(const std::string& folder = "") {
        machine.run([&] { EXPECT_TRUE(steps->word().run(folder)); });
        machine.advance(1s);
    }

    VirtualMachine machine;
    Preferences preferences{machine.loop, machine.kept, DataDirectory(machine.drive("data")),
                            [](const std::string&) {}};
    std::optional<FirstSteps> steps;
    const std::string music = machine.drive("music");
};

const std::string howTo = "'play and a part of a name plays a song, 'rnd any of them, 'next the "
                          "next one; 'help tells more";

TEST_F(FirstStepsTest, LeadFromNothingToTheFirstSongByTheirLines) {
    machine.song("rock", "a ride.flac");
    begin();
    EXPECT_TRUE(steps->areShown());
    EXPECT_EQ(steps->asLines()[1].find("  'filter any"), 0u) << "before the scan that it is for";
    machine.owner(steps->allTypes().line);
    EXPECT_EQ(steps->allTypes().line, "");
    const auto lines = steps->steps();
    EXPECT_EQ(lines.size(), 3u);
    for (const auto& step : lines)
        machine.owner(step.line, 1s);
    EXPECT_EQ(machine.titles(), Lines{"a ride.flac"});
    EXPECT_EQ(machine.room.told, Lines{howTo});
    EXPECT_FALSE(steps->areShown());
    EXPECT_EQ(machine.player.opened.size(), 1u);
    steps->askFor(true);
    EXPECT_TRUE(steps->areShown());
}

TEST_F(FirstStepsTest, TakeAWholeFolderOfAllTypes) {
    machine.song("rock", "a ride.flac");
    machine.song("rock\\live", "b ride.mp3");
    begin();
    machine.dialogs.answers = {machine.drive("music")};
    machine.forget();
    addMusic();
    EXPECT_EQ(machine.dialogs.fileQuestion.directory, machine.drive("music"));
    EXPECT_EQ(machine.titles(), (Lines{"a ride.flac", "b ride.mp3"}));
    EXPECT_EQ(machine.state().mediaFilter, "any");
    EXPECT_EQ(machine.room.told,
              (Lines{"looking for songs in " + music, "added 2 songs from " + music, howTo}));
    EXPECT_EQ(machine.allSaid(), Lines{}) << "nothing to others";

    machine.room.told.clear();
    machine.song("rock", "c ride.wav");
    addMusic(music + "\\rock");
    EXPECT_EQ(machine.room.told, (Lines{"looking for songs in " + music + "\\rock",
                                        "added 1 song from " + music + "\\rock, 1 was there"}));
}

TEST_F(FirstStepsTest, TellWhatComesOfAFolderWithoutSongsAndOfNone) {
    machine.disk.write("music/readme.txt", "");
    begin();
    addMusic(machine.drive("music"));
    EXPECT_EQ(machine.room.told.back(), "there are no songs in " + music);
    addMusic(machine.drive("attic"));
    EXPECT_EQ(
        machine.room.told.back().find("there are no songs in " + machine.drive("attic") + " - "),
        0u)
        << machine.room.told.back();
    machine.room.told.clear();
    addMusic(); // and the dialog is dismissed
    EXPECT_EQ(machine.room.told, Lines{});
    EXPECT_TRUE(steps->areShown());
}

TEST_F(FirstStepsTest, CountUpWhatIsFoundAndAddOneFolderAtATime) {
    machine.song("rock", "a.mp3");
    machine.song("rock", "b.mp3");
    machine.song("slow", "c.mp3");
    begin();
    machine.slowDisk.spans[machine.drive("music/slow")] = 5s;
    std::string progress;
    machine.loop.once(2s, [&] {
        progress = steps->progress();
        EXPECT_TRUE(steps->word().run(""));
    });
    addMusic(music);
    EXPECT_EQ(progress, "looking in " + music + ":  2 songs so far");
    EXPECT_EQ(machine.room.told, (Lines{"looking for songs in " + music, "still " + progress,
                                        "added 3 songs from " + music, howTo}));
    EXPECT_EQ(steps->progress(), "");
    machine.loop.once(2s, [&] { progress = steps->progress(); });
    machine.owner("'scan " + music, 9s);
    EXPECT_EQ(progress, "looking in " + music + ":  2 songs so far") << "by the line, too";
    EXPECT_EQ(steps->progress(), "");
}

} // namespace
} // namespace larkspin
