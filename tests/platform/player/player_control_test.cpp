// What the control makes of the words of its process: here that is a puppet, which says what a test
// has it say and keeps what it hears, so that all spans are of virtual time.
#include "support/real_player.h"

#include <algorithm>
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>

namespace larkspin {
namespace {

using namespace std::chrono_literals;

struct PlayerControlTest : RealPlayer {
    // An older one may still be about to end, so each has files of its own.
    PlayerControl::Player puppet() {
        ear = "heard" + std::to_string(++puppets);
        const std::string words = (disk.path() / ("words" + std::to_string(puppets))).native();
        EXPECT_EQ(::mkfifo(words.c_str(), 0600), 0);
        mouth = Descriptor(::open(words.c_str(), O_RDWR | O_CLOEXEC));
        PlayerControl::Player made = playing();
        made.program = script("cat <&3 >${0%/*}/" + ear + " & exec cat " + words + " >&3");
        return made;
    }
    // Until the puppet knows of the song, which bears that number.
    void opens(PlayerControl& player, std::uint32_t number) {
        player.Open(song("a.wav", 0.1));
        EXPECT_TRUE(comesTrue([&] {
            player.PlayState();
            const auto wishes = heard(); // in one look, since another process begins the file anew
            return !wishes.empty() && wishes.back().song == number && wishes.back().hasFile;
        }));
    }
    // Words that nobody has heard yet must not be followed by others.
    void says(PlayerReport report, double duration = 10) {
        if (report.start == 0)
            report.start = startSteps;
        report.confined = true;
        report.duration = duration;
        if (report.at == Clock::time_point())
            report.at = Clock::now();
        const std::string bytes = encoded(report);
        EXPECT_EQ(::write(mouth.number(), bytes.data(), bytes.size()), std::ssize(bytes));
    }
    // All that the latest process has been told.
    std::vector<PlayerWishes> heard() const {
        const std::size_t size = encoded(PlayerWishes{.title = "a"}).size();
        const std::string bytes = disk.read(ear);
        std::vector<PlayerWishes> wishes;
        for (std::size_t at = 0; at + size <= bytes.size(); at += size)
            wishes.push_back(decodedWishes(bytes.substr(at, size)).value());
        return wishes;
    }
    bool hears(std::size_t count) { // in all
        return comesTrue([&] { return heard().size() == count; });
    }

    int puppets = 0;
    std::string ear;
    Descriptor mouth;
};

TEST_F(PlayerControlTest, TheWishesOfATurnAreSaidTogetherAndOnce) {
    PlayerControl player(loop, puppet(), tell);
    opens(player, 2);
    for (int count = 0; count < 50; ++count)
        EXPECT_EQ(player.PlayState(), PlayState::waiting);
    player.setCurrentPosition(4);
    player.setCurrentPosition(3);
    player.Pause();
    player.setVolume(-2000);
    ASSERT_TRUE(hears(2));
    EXPECT_EQ(heard()[1].seekTo, 3);
    EXPECT_FALSE(heard()[1].playing);
    EXPECT_NEAR(heard()[1].volume, 0.1, 1e-9);
    player.Stop();
    ASSERT_TRUE(hears(3));
    EXPECT_FALSE(heard()[2].hasFile);
}

// The older songs of a process may have harmed it, until the current one has got going.
TEST_F(PlayerControlTest, AStandstillIsEndedSoonerOrLaterByWhatWentBefore) {
    using Phase = SongPhase;
    const struct {
        const char* what;
        bool isFirst;
        std::optional<PlayerReport> said;
        int lost, failed; // after how many seconds
    } cases[] = {{"it says nothing, nor does the next one", true, {}, 20, 40},
                 {"it opens its first song", true, {{.phase = Phase::opening}}, 5, 5},
                 {"it opens another", false, {{.phase = Phase::opening}}, 3, 24},
                 {"it begins another", false, {{.phase = Phase::open}}, 3, 24},
                 {"it plays another", false, {{.phase = Phase::open, .position = 1}}, 5, 5}};
    for (auto [what, isFirst, said, lostAfter, failedAfter] : cases) {
        SCOPED_TRACE(what);
        {
            PlayerControl player(loop, puppet(), tell);
            opens(player, 2); // its second wish, after the one for none
            if (!isFirst) {
                says({.song = 2, .phase = Phase::ended});
                EXPECT_TRUE(reaches(player, PlayState::stopped));
                opens(player, 4);
            }
            if (said) {
                said->song = isFirst ? 2 : 4;
                says(*said);
                EXPECT_TRUE(comesTrue([&] { return player.Duration() > 0; }));
            }
            const Nanoseconds begin = loop.now();
            lost.clear();
            loop.waitUntil(begin + (lostAfter - 1) * 1s);
            EXPECT_EQ(lost, "");
            loop.waitUntil(begin + lostAfter * 1s);
            EXPECT_EQ(lost, "the player stood still\n");
            EXPECT_EQ(player.wasGivenUp(), lostAfter == failedAfter);
            loop.waitUntil(begin + failedAfter * 1s - 1ms);
            EXPECT_EQ(player.wasGivenUp(), lostAfter == failedAfter);
            loop.waitUntil(begin + failedAfter * 1s);
            EXPECT_EQ(player.failure(), "the player stood still");
        }
        EXPECT_TRUE(loop.hasNothingToDo());
    }
    EXPECT_EQ(told, "");
}

TEST_F(PlayerControlTest, TheSongsPlaceIsTakenFromWhatIsKnown) {
    const auto open = SongPhase::open;
    PlayerControl player(loop, puppet(), tell);
    opens(player, 2);
    // Nothing has come for a minute, nor is it known how long the song is.
    says({.song = 2, .phase = open, .advancing = true, .position = 3, .at = Clock::now() - 1min},
         0);
    EXPECT_TRUE(comesTrue([&] { return player.CurrentPosition() == 6; }));
    player.setCurrentPosition(5);
    EXPECT_EQ(player.CurrentPosition(), 5);
    player.setCurrentPosition(50);
    says({.song = 2, .phase = open});
    EXPECT_TRUE(comesTrue([&] { return player.CurrentPosition() == 10; })) << "its length by now";
    says({.song = 2, .seek = 2, .phase = open, .position = 4}, 0);
    EXPECT_TRUE(comesTrue([&] { return player.CurrentPosition() == 4; }));
    EXPECT_EQ(player.Duration(), 10);
    says({.song = 2, .seek = 2, .phase = open, .position = 7}, 11);
    EXPECT_TRUE(comesTrue([&] { return player.Duration() == 11; }));
    player.Stop();
    EXPECT_EQ(player.CurrentPosition(), 7) << "though nobody has asked before";
    opens(player, 5);
    EXPECT_EQ(player.CurrentPosition(), 0);
    EXPECT_EQ(player.Duration(), 0);
}

TEST_F(PlayerControlTest, AfterFiveSilentSecondsAnotherProcessMayFindADevice) {
    PlayerControl player(loop, puppet(), tell);
    for (const auto& [number, first, span] :
         {std::tuple(2u, 2u, 4999ms), {4u, 2u, 1ms}, {6u, 6u, 0ms}}) {
        opens(player, number);
        EXPECT_EQ(heard().front().song, first) << "of those that the process has been told of";
        says({.song = number, .phase = SongPhase::ended, .withoutDevice = true});
        EXPECT_TRUE(reaches(player, PlayState::stopped));
        pass(span);
    }
}

TEST_F(PlayerControlTest, ADeviceThatHasGoneDuringARestIsMissedAtOnce) {
    auto onDevice = puppet();
    onDevice.arguments.clear();
    PlayerControl player(loop, onDevice, tell);
    opens(player, 2);
    says({.song = 2, .phase = SongPhase::ended});
    EXPECT_TRUE(reaches(player, PlayState::stopped));
    pass(62s);
    opens(player, 4);
    says({.song = 4, .phase = SongPhase::open, .withoutDevice = true});
    EXPECT_TRUE(comesTrue([&] { return player.Duration() > 0; }));
    EXPECT_TRUE(comesTrue([&] { return !told.empty(); }));
}

TEST_F(PlayerControlTest, NeitherASlowStartNorAPauseIsAStandstill) {
    PlayerControl player(loop, puppet(), tell);
    opens(player, 2);
    for (std::uint8_t step = 1; step <= startSteps; ++step) {
        says({.song = 2, .start = step}, step);
        EXPECT_TRUE(comesTrue([&] { return player.Duration() == step; }));
        pass(4s);
    }
    says({.song = 2, .phase = SongPhase::open});
    EXPECT_TRUE(reaches(player, PlayState::playing));
    pass(4s);
    player.Pause();
    pass(60s);
    player.Play();
    pass(3s);
    EXPECT_EQ(lost, "");
}

TEST_F(PlayerControlTest, ASecondIsGivenToEachSongBeforeTheWishedOne) {
    PlayerControl player(loop, puppet(), tell);
    opens(player, 2);
    says({.song = 2, .phase = SongPhase::open, .position = 1});
    EXPECT_TRUE(reaches(player, PlayState::playing));
    opens(player, 4);
    pass(750ms);
    says({.song = 3, .phase = SongPhase::ended, .withoutDevice = true});
    EXPECT_TRUE(
        comesTrue([&] { return player.PlayState() == PlayState::waiting && !told.empty(); }));
    pass(999ms);
    EXPECT_EQ(lost, "");
    pass(1ms);
    EXPECT_EQ(lost, "the player stood still\n");
    EXPECT_EQ(player.PlayState(), PlayState::waiting) << "for another process";
}

// One may be on another machine, and give no sign. None of these finds one.
TEST_F(PlayerControlTest, ADeviceIsLookedForAtOnceThenEachHalfMinuteAndAfterASign) {
    ::setenv("XDG_RUNTIME_DIR", disk.path().c_str(), 1);
    disk.write(
        "words",
        encoded(PlayerReport{
            .song = 2, .start = startSteps, .phase = SongPhase::open, .withoutDevice = true}));
    const std::string text = "cat ${0%/*}/words >&3; echo >> ${0%/*}/started; exec sleep 100";
    PlayerControl player(loop, {script(text), {}, asked}, tell);
    player.Open(song("a.wav", 0.1));
    player.Pause();
    std::size_t started = 1; // with the song, and a second one looks at once
    const auto isAnotherStarted = [&] {
        player.PlayState();
        return disk.read("started").size() == started + 1;
    };
    const auto isLookOver = [&] {
        return std::ranges::count_if(childProcesses(), [&](pid_t child) {
                   return !hasEnded(child) && std::ranges::count(before, child) == 0;
               }) == 1;
    };
    for (const int rounds : {0, 2, 2, 2, 120, 120, 2, 2, 2, 2, 120}) {
        for (int round = 1; round < rounds; ++round) {
            pass(250ms);
            ASSERT_TRUE(comesTrue(isLookOver)) << started;
        }
        pass(rounds > 0 ? 250ms : 0ms);
        ASSERT_TRUE(comesTrue(isAnotherStarted)) << started;
        if (++started == 7)
            disk.write("pipewire-0", "");
    }
    EXPECT_EQ(told, "larkspin: this system can't confine the player, a hostile song could reach "
                    "your files\nlarkspin: no sound device, songs play silently\n");
    ::unsetenv("XDG_RUNTIME_DIR");
}

// One claims that songs which it will be given later have ended.
TEST_F(PlayerControlTest, WhatIsNoPlayerIsNotBelieved) {
    const std::string path = song("a.wav", 0.1);
    disk.write("ahead",
               encoded(PlayerReport{.song = 100, .phase = SongPhase::ended, .duration = 1}));
    for (const std::string text :
         {"printf nonsense >&3; sleep 100", "head -c 56 /dev/zero >&3; sleep 100",
          "cat ${0%/*}/ahead >&3; sleep 100", "exit 1", "kill -SEGV $$"}) {
        SCOPED_TRACE(text);
        PlayerControl::Player no = playing();
        no.program = script(text);
        PlayerControl player(loop, no, tell);
        lost.clear();
        player.Open(path);
        EXPECT_TRUE(
            comesInTime([&] { return lost == "the player died\nthe player died\n"; }, 250ms));
        pass(2s);
        EXPECT_TRUE(reaches(player, PlayState::stopped));
        EXPECT_EQ(player.failure(), "the player died");
    }
    EXPECT_EQ(told, "");
}

TEST(PlayerReports, AreCheckedWhole) {
    const auto isTaken = [](const std::function<void(PlayerReport&)>& change) {
        PlayerReport report{.at = std::chrono::steady_clock::now()};
        change(report);
        return decodedReport(encoded(report)).has_value();
    };
    EXPECT_TRUE(isTaken([](PlayerReport& report) { report.rate = lowestRate; }));
    EXPECT_TRUE(isTaken([](PlayerReport& report) {
        report = {.duration = longestTime, .position = longestTime, .rate = highestRate};
    }));
    const PlayerReport full{.song = 1,
                            .seek = 2,
                            .start = 3,
                            .phase = SongPhase::failed,
                            .fault = SongFault::damaged,
                            .confined = true,
                            .moving = true,
                            .advancing = true,
                            .withoutDevice = true,
                            .duration = 4,
                            .position = 5,
                            .rate = 6,
                            .at = std::chrono::steady_clock::now(),
                            .tags = {"a", "", std::string(longestTag, 'c')}};
    EXPECT_EQ(decodedReport(encoded(full)), full);
    using Limits = std::numeric_limits<double>;
    for (const double bad :
         {Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(), -0x1p63, 0x1p63})
        for (double PlayerReport::*field :
             {&PlayerReport::duration, &PlayerReport::position, &PlayerReport::rate})
            EXPECT_FALSE(isTaken([&](PlayerReport& report) { report.*field = bad; })) << bad;
    EXPECT_FALSE(isTaken([](PlayerReport& report) { report.rate = 0; }));
    EXPECT_FALSE(isTaken([](PlayerReport& report) { report.at += 10s; }));
    EXPECT_FALSE(isTaken([](PlayerReport& report) { report.at = decltype(report.at)::min(); }));
    EXPECT_FALSE(isTaken([](PlayerReport& report) { report.phase = static_cast<SongPhase>(9); }));
    EXPECT_FALSE(isTaken([](PlayerReport& report) { report.fault = static_cast<SongFault>(9); }));
    const std::string bytes = encoded(full);
    EXPECT_FALSE(decodedReport(bytes + 'x')) << "a tag that is too long";
    EXPECT_FALSE(decodedReport(encoded(PlayerReport{}) + '\0')) << "a fourth tag";
    EXPECT_FALSE(decodedReport(bytes.substr(0, bytes.size() - longestTag - 1))) << "only two";
    EXPECT_FALSE(decodedReport(bytes.substr(0, 20)));
}

TEST_F(PlayerControlTest, WhatASongSaysOfItselfIsMadeReadable) {
    PlayerControl player(loop, puppet(), tell);
    opens(player, 2);
    std::string umlauts;
    for (std::size_t count = 0; count < longestTag; ++count)
        umlauts += "\u00FC";
    says({.song = 2,
          .phase = SongPhase::open,
          .tags = {"\x1B[31mred\n\xFF", 'a' + umlauts, std::string("x\0y", 3)}});
    EXPECT_TRUE(comesTrue([&] { return player.Duration() > 0; }));
    EXPECT_EQ(player.tags().title, "\uFFFD[31mred \uFFFD");
    EXPECT_EQ(player.tags().artist, 'a' + umlauts.substr(0, 198)) << "cut where a character ends";
    EXPECT_EQ(player.tags().album, "xy");
    says({.song = 2, .phase = SongPhase::open, .position = 1});
    EXPECT_TRUE(comesTrue([&] { return player.CurrentPosition() >= 1; }));
    EXPECT_EQ(player.tags().album, "xy") << "of another process, which knows no tags yet";
    player.Open("");
    EXPECT_EQ(player.tags(), SongTags());
}

TEST_F(PlayerControlTest, TellsTheOwnerOnceThatItIsMissing) {
    PlayerControl player(loop, {(disk.path() / "nothing").native(), {}, asked}, tell);
    for (int round = 0; round < 2; ++round) {
        player.Open(song("a.wav", 0.1));
        EXPECT_EQ(player.PlayState(), PlayState::waiting);
        pass(2s);
        EXPECT_TRUE(reaches(player, PlayState::stopped));
        EXPECT_TRUE(player.wasGivenUp());
    }
    EXPECT_EQ(told, "larkspin: the player can't be started, songs don't play\n");
}

} // namespace
} // namespace larkspin
