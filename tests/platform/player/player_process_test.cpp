// A player process that fails, or is in the hands of somebody else: the song it had is given
// up, and nothing else is lost.
#include "support/pipe.h"
#include "support/real_player.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <limits>
#include <set>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace larkspin {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

struct PlayerProcessTest : RealPlayer {
    // The one that has come since `before`.
    static pid_t newChild(const std::vector<pid_t>& before) {
        for (const pid_t child : childProcesses())
            if (std::find(before.begin(), before.end(), child) == before.end())
                return child;
        return 0;
    }
    static bool hasEnded(pid_t process) { // whether or not somebody has waited for it
        const char state = process > 0 ? stateOf(process) : 0;
        return state == 0 || state == 'Z';
    }
    pid_t startLong(PlayerControl& player) { // the process that plays the song
        return start(player, song("long.wav", 10));
    }
    pid_t start(PlayerControl& player, const std::string& path) {
        player.Open(path);
        EXPECT_TRUE(reaches(player, PlayState::playing));
        return newChild(before);
    }
    // Only once it stands is it sure to take nothing more that is sent to it.
    void stop(pid_t process) {
        ::kill(process, SIGSTOP);
        EXPECT_TRUE(comesTrue([=] { return stateOf(process) == 'T'; }));
    }
    bool allEnd() {
        return comesInTime([&] { return newChild(before) == 0; }, 1s);
    }
    // An executable of that text in place of the player.
    PlayerControl::Player script(const std::string& text) {
        disk.write("player", "#!/bin/sh\n" + text + '\n');
        fs::permissions(disk.path() / "player", fs::perms::owner_all);
        return {(disk.path() / "player").native(), {fastSink}, asked};
    }
};

TEST_F(PlayerProcessTest, KilledInMidSongItIsReplacedForTheNext) {
    PlayerControl player(loop, playing(clockedSink), tell);
    const pid_t first = startLong(player);
    pass(1s);
    ::kill(first, SIGKILL);
    EXPECT_TRUE(reaches(player, PlayState::waiting)); // it began a second ago
    EXPECT_FALSE(player.wasGivenUp());
    pass(1s);
    EXPECT_EQ(player.PlayState(), PlayState::stopped);
    EXPECT_EQ(player.failure(), "the player died");
    EXPECT_NEAR(player.Duration(), 10, 0.01);
    player.Play();
    player.setCurrentPosition(1);
    EXPECT_EQ(player.PlayState(), PlayState::stopped);

    EXPECT_TRUE(isPlayedToItsEnd(player, song("b.wav", 0.1)));
    EXPECT_TRUE(comesInTime([&] { return stateOf(first) == 0; }, 10ms)); // not even a zombie
    EXPECT_NE(newChild(before), 0);
}

TEST_F(PlayerProcessTest, StandingStillForFiveSecondsItIsReplaced) {
    PlayerControl player(loop, playing(clockedSink), tell);
    const pid_t first = startLong(player);
    player.Pause();
    pass(100s);
    EXPECT_EQ(player.PlayState(), PlayState::paused); // that is none
    player.Play();
    stop(first);
    pass(3s);
    EXPECT_EQ(player.PlayState(), PlayState::playing);
    ::kill(first, SIGCONT);
    player.setCurrentPosition(5);
    EXPECT_TRUE(comesTrue([&] { return player.CurrentPosition() > 5.01; }));
    stop(first);
    pass(3s);
    EXPECT_EQ(player.PlayState(), PlayState::playing); // it had moved
    EXPECT_LT(player.CurrentPosition(), 9);            // and is not believed to go on
    pass(2s);
    EXPECT_EQ(player.PlayState(), PlayState::stopped);
    EXPECT_EQ(player.failure(), "the player stood still");
    EXPECT_TRUE(isPlayedToItsEnd(player, song("b.wav", 0.1)));
    EXPECT_TRUE(comesInTime([&] { return stateOf(first) == 0; }, 10ms));
}

TEST_F(PlayerProcessTest, ASongThatItNeverTookGoesToAnother) {
    PlayerControl player(loop, playing(fastSink), tell);
    ASSERT_TRUE(isPlayedToItsEnd(player, song("a.wav", 0.1)));
    const pid_t first = newChild(before);
    stop(first);
    player.Open(song("b.wav", 0.1));
    // No longer: the other one starts in real time, and would soon seem to stand still.
    EXPECT_TRUE(comesInTime([&] { return stateOf(first) == 0; }, 100ms));
    EXPECT_TRUE(reaches(player, PlayState::stopped));
    EXPECT_EQ(player.failure(), std::nullopt);
    ::kill(newChild(before), SIGKILL); // at rest
    EXPECT_TRUE(isPlayedToItsEnd(player, song("c.wav", 0.1)));
}

// An owner who asks for another song every three seconds must not keep the last one's process.
TEST_F(PlayerProcessTest, ManyWishesForAnotherSongAreNoLife) {
    PlayerControl player(loop, playing(fastSink), tell);
    ASSERT_TRUE(isPlayedToItsEnd(player, song("a.wav", 0.1)));
    stop(newChild(before));
    const std::string next = song("b.wav", 0.1);
    for (int count = 0; count < 4; ++count) {
        player.Open(next);
        pass(3s);
    }
    EXPECT_TRUE(reaches(player, PlayState::stopped));
    EXPECT_EQ(player.failure(), std::nullopt);
}

TEST_F(PlayerProcessTest, IsRenewedBetweenSongsBeforeItGrows) {
    const std::string path = song("a.wav", 0.1);
    // Without a device it looks for one again after a minute.
    for (const auto& [sink, mostSongs, span] :
         {std::tuple(fastSink, 3, 1s), {"nosuchsink", 500, 15s}}) {
        SCOPED_TRACE(sink);
        before = childProcesses();
        auto renewed = playing(sink);
        renewed.mostSongs = mostSongs;
        PlayerControl player(loop, renewed, tell);
        std::set<pid_t> processes;
        for (int count = 0; count < 6; ++count) {
            EXPECT_TRUE(isPlayedToItsEnd(player, path));
            processes.insert(newChild(before));
            pass(span);
        }
        EXPECT_GE(processes.size(), 2u);
        EXPECT_LE(processes.size(), 3u);
    }
}

TEST_F(PlayerProcessTest, AnOutputThatHangsEndsWithIt) {
    // Opening the sink waits for somebody to read the pipe.
    const fs::path pipe = disk.path() / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    PlayerControl player(loop, playing("filesink location=" + pipe.native()), tell);
    player.Open(song("a.wav", 0.1));
    EXPECT_TRUE(staysFor(player, PlayState::waiting, 500ms));
    EXPECT_TRUE(comesInTime([&] { return player.PlayState() == PlayState::stopped; }, 10ms));
    EXPECT_EQ(player.failure(), "the player stood still");
    EXPECT_TRUE(allEnd());
}

TEST_F(PlayerProcessTest, EndsAfterAMinuteOfRestAndNotBefore) {
    PlayerControl player(loop, playing(clockedSink), tell);
    player.setRate(1.5);
    player.Open("");
    EXPECT_EQ(newChild(before), 0); // nothing to play yet
    ASSERT_TRUE(isPlayedToItsEnd(player, song("a.wav", 0.1)));
    pass(59s);
    EXPECT_NE(newChild(before), 0);
    pass(2s);
    EXPECT_TRUE(allEnd());
    EXPECT_TRUE(loop.hasNothingToDo());
    EXPECT_EQ(player.PlayState(), PlayState::stopped);
    EXPECT_FALSE(player.wasGivenUp());

    startLong(player);
    player.Pause();
    pass(300s);
    EXPECT_NE(newChild(before), 0); // a paused song is no rest
    player.Stop();
    pass(62s);
    EXPECT_TRUE(comesTrue([&] { return hasEnded(newChild(before)); }));
}

TEST_F(PlayerProcessTest, EndsWithTheProgram) {
    Pipe pipe;
    const std::string path = song("long.wav", 10);
    const pid_t program = ::fork();
    if (program == 0) {
        before.clear(); // none of them is this one's
        PlayerControl player(loop, playing(clockedSink), tell);
        const pid_t started = start(player, path);
        pipe.write({reinterpret_cast<const char*>(&started), sizeof started});
        ::pause();
        ::_exit(0);
    }
    pid_t started = 0;
    ASSERT_EQ(::read(pipe.out(), &started, sizeof started), ssize_t{sizeof started});
    EXPECT_EQ(stateOf(started), 'S');
    ::kill(program, SIGKILL);
    ::waitpid(program, nullptr, 0);
    EXPECT_TRUE(comesTrue([&] { return hasEnded(started); }));
}

TEST_F(PlayerProcessTest, InheritsTheSocketAndNoMore) {
    const int ours = ::open("/dev/zero", O_RDONLY); // without O_CLOEXEC
    ::setenv("LARKSPIN_SECRET", "1", 1);
    ::setenv("PULSE_SERVER", "unix:/nowhere", 1);
    sigset_t all, old;
    sigfillset(&all);
    ::pthread_sigmask(SIG_BLOCK, &all, &old);
    ::signal(SIGUSR1, SIG_IGN);
    PlayerControl player(loop, playing(clockedSink), tell);
    const fs::path proc = "/proc/" + std::to_string(startLong(player));
    ::signal(SIGUSR1, SIG_DFL);
    ::pthread_sigmask(SIG_SETMASK, &old, nullptr);
    ::unsetenv("PULSE_SERVER");
    ::close(ours);

    EXPECT_EQ(fs::read_symlink(proc / "fd/0"), "/dev/null");
    EXPECT_EQ(fs::read_symlink(proc / "fd/2"), "/dev/null");
    std::set<std::string> opened;
    for (const auto& entry : fs::directory_iterator(proc / "fd"))
        opened.insert(fs::read_symlink(entry.path()).native());
    EXPECT_FALSE(opened.contains("/dev/zero"));
    const std::string status = disk.read(proc / "status"), variables = disk.read(proc / "environ");
    EXPECT_NE(status.find("\nSigBlk:\t0000000000000000\n"), status.npos) << status;
    const auto ignored = std::stoul(status.substr(status.find("SigIgn:") + 8), nullptr, 16);
    EXPECT_EQ(ignored & (1u << (SIGUSR1 - 1)), 0u);
    EXPECT_NE(status.find("\nNoNewPrivs:\t1\n"), status.npos) << status;
    EXPECT_NE(status.find("\nSeccomp:\t2\n"), status.npos) << status;
    EXPECT_EQ(told, "") << "that it isn't confined";
    EXPECT_EQ(variables.find("LARKSPIN_SECRET"), variables.npos);
    EXPECT_NE(variables.find("PULSE_SERVER"), variables.npos);
}

// What its code could do in the hands of a file's maker: the sink writes where it wants.
TEST_F(PlayerProcessTest, WritesNowhereButWhereItIsAllowedTo) {
    const std::string path = song("a.wav", 0.2);
    TempDirectory home;
    const std::string sink = "filesink location=" + (home.path() / "theirs").native();
    for (const bool allowed : {false, true}) {
        SCOPED_TRACE(allowed);
        const fs::path writable = allowed ? home.path() : disk.path();
        PlayerControl player(loop, {LARKSPIN_PLAYER, {sink, writable.native()}, asked}, tell);
        EXPECT_TRUE(isPlayedToItsEnd(player, path));
        EXPECT_EQ(fs::exists(home.path() / "theirs"), allowed);
    }
}

// One claims that songs which it will be given later have ended.
TEST_F(PlayerProcessTest, WhatIsNoPlayerIsNotBelieved) {
    const std::string path = song("a.wav", 0.1);
    disk.write("ahead",
               encoded(PlayerReport{.song = 100, .phase = SongPhase::ended, .duration = 1}));
    for (const std::string text :
         {"printf nonsense >&3; sleep 100", "head -c 56 /dev/zero >&3; sleep 100",
          "cat ${0%/*}/ahead >&3; sleep 100", "exit 1", "kill -SEGV $$"}) {
        SCOPED_TRACE(text);
        PlayerControl player(loop, script(text), tell);
        player.Open(path);
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
    EXPECT_TRUE(isTaken([](PlayerReport&) {}));
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
    EXPECT_FALSE(decodedReport(encoded(PlayerReport{}) + 'x'));
}

TEST_F(PlayerProcessTest, TellsTheOwnerOnceThatItIsMissing) {
    PlayerControl player(loop, {(disk.path() / "nothing").native(), {}, asked}, tell);
    for (int round = 0; round < 2; ++round) {
        player.Open(song("a.wav", 0.1));
        EXPECT_EQ(player.PlayState(), PlayState::waiting);
        pass(2s);
        EXPECT_EQ(player.PlayState(), PlayState::stopped);
        EXPECT_TRUE(player.wasGivenUp());
    }
    EXPECT_EQ(told, "larkspin: the player can't be started, songs don't play\n");
}

TEST_F(PlayerProcessTest, TakesSongsFasterThanTheyCanBeOpened) {
    const auto input = fs::read_symlink("/proc/self/fd/0");
    PlayerControl player(loop, playing(fastSink), tell);
    const std::string songs[] = {song("a.wav", 0.1), song("b.mp3", 0.1), song("c.mid", 0.1)};
    const char* const wanted = std::getenv("LARKSPIN_QUICK_SONGS");
    const int count = wanted ? std::atoi(wanted) : 20000;
    for (int at = 0; at < count; ++at) {
        player.Open(songs[at % 3]);
        EXPECT_NE(player.PlayState(), PlayState::closed);
        std::this_thread::sleep_for(std::chrono::microseconds(at % 100 == 0 ? 2000 : 1));
    }
    EXPECT_TRUE(isPlayedToItsEnd(player, songs[0]));
    EXPECT_NEAR(player.Duration(), 0.1, 0.001);
    EXPECT_EQ(fs::read_symlink("/proc/self/fd/0"), input);
    pass(1s);
    EXPECT_EQ(childProcesses().size(), before.size() + 1);
}

} // namespace
} // namespace larkspin
