// larkspin started with files, beside a copy that runs already and without one.
#include "support/child.h"
#include "support/patience.h"
#include "support/private_bus.h"

#include <gtest/gtest.h>
#include <initializer_list>
#include <string>

namespace larkspin {
namespace {

struct StartedWithFiles : testing::Test {
    StartedWithFiles() {
        for (const char* song : {"ride.wav", "-b.wav", "Who Made Who?.wav", "x\xFF.wav",
                                 "below/y.wav", "below/deep/z.wav"})
            disk.write("Music/" + std::string(song), "");
        disk.write("larkspin/larkspin.ini", "[lark]\r\nload=2\r\nmedia filter=wav\r\n");
    }
    // In the directory of the songs.
    std::unique_ptr<Child> start(const std::string& words, const std::string& at,
                                 const char* program = LARKSPIN_TTY) const {
        auto variables = ownHome(disk.path().native());
        for (const std::string& more : {"DBUS_SESSION_BUS_ADDRESS=" + at, std::string("DISPLAY="),
                                        std::string("WAYLAND_DISPLAY=")})
            variables.push_back(more);
        return Child::start("sh", variables,
                            {"-c", "cd " + (disk.path() / "Music").native() + " && exec " +
                                       std::string(program) + ' ' + words + " 2>&1"});
    }
    std::string address(const std::string& below) const {
        return "file://" + (disk.path() / "Music" / below).native();
    }

    TempDirectory disk;
    PrivateBus bus;
    const std::string noBus = "unix:path=/nonexistent";
};

TEST_F(StartedWithFiles, GivesThemToTheCopyThatRuns) {
    const auto first = start("", bus.address());
    EXPECT_TRUE(first->says("by moraine", patience)); // it has the place of the only copy
    const struct {
        std::string words, told;
        const char* program = LARKSPIN_TTY;
    } starts[] = {
        {"ride.wav", "added and playing ride"},
        {"./ride.wav", "playing ride", LARKSPIN_DESKTOP}, // which needs no display for that
        {"-- -b.wav", "added and playing -b"},
        {"'Who Made Who?.wav' ../Music/ride.wav",
         "added 1 song, 1 was there, playing Who Made Who?"},
        {address("x%FF.wav"), "added and playing x\xFF"},
        {"below", "added 2 songs from "},
        {"gone.wav", "couldn't open "},
        {"https://example.org/a.mp3", "couldn't open https://example.org/a.mp3:"},
    };
    for (const auto& [words, told, program] : starts) {
        const auto second = start(words, bus.address(), program);
        EXPECT_EQ(second->ends(patience), 0) << words;
        EXPECT_EQ(second->rest(patience), "");
        EXPECT_TRUE(first->says("[room] " + told, patience)) << told;
    }
    first->endInput();
    EXPECT_EQ(first->ends(patience), 0);
}

TEST_F(StartedWithFiles, TakesThemItselfWhereItIsTheOnlyCopyAndSaysWhereItCannot) {
    const auto first = start("below ride.wav", noBus);
    EXPECT_TRUE(first->says("[room] added 3 songs, playing ride", patience));
    for (const std::string& at : {noBus, bus.address()}) {
        const auto second = start("-- -b.wav", at);
        EXPECT_TRUE(second->says("larkspin runs already, but can't be reached", patience));
        EXPECT_EQ(second->ends(patience), 1);
    }
    first->endInput();
    EXPECT_EQ(first->rest(patience).find("-b"), std::string::npos);
}

TEST_F(StartedWithFiles, AnswersOptionsAtOnce) {
    for (const char* const program : {LARKSPIN_TTY, LARKSPIN_DESKTOP}) {
        const auto help = start("--help", noBus, program),
                   version = start("--version", noBus, program),
                   unknown = start("ride.wav --loud", noBus, program);
        EXPECT_TRUE(help->says("usage: larkspin", patience));
        EXPECT_EQ(help->ends(patience), 0);
        EXPECT_TRUE(version->says("larkspin " LARKSPIN_VERSION, patience));
        EXPECT_EQ(version->ends(patience), 0);
        EXPECT_TRUE(unknown->says("there is no option --loud", patience));
        EXPECT_EQ(unknown->ends(patience), 2);
    }
    EXPECT_FALSE(std::filesystem::exists(disk.path() / "larkspin/larkspin.lock"));
}

} // namespace
} // namespace larkspin
