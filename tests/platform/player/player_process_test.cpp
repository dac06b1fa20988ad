// A player process that fails, or is in the hands of somebody else: the song it had is given
// up, and nothing else is lost.
#include "platform/player/player_process.h"
#include "platform/posix/drive_paths.h"
#include "platform/posix/opened_file.h"
#include "support/pipe.h"
#include "support/real_player.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <set>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace larkspin {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

struct PlayerProcessTest : RealPlayer {
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
    EXPECT_EQ(lost, "the player died\n");
    EXPECT_NEAR(player.Duration(), 10, 0.01);
    player.Play();
    player.setCurrentPosition(9.5);
    EXPECT_LT(player.CurrentPosition(), 9);
    EXPECT_EQ(player.PlayState(), PlayState::stopped);

    EXPECT_TRUE(isPlayedToItsEnd(player, song("b.wav", 0.1)));
    EXPECT_TRUE(comesInTime([&] { return stateOf(first) == 0; }, 10ms)); // not even a zombie
    EXPECT_NE(newChild(before), 0);
}

TEST_F(PlayerProcessTest, ASongThatItNeverTookGoesToAnother) {
    PlayerControl player(loop, playing(fastSink), tell);
    ASSERT_TRUE(isPlayedToItsEnd(player, song("a.wav", 0.1)));
    const pid_t first = newChild(before);
    stop(first);
    player.Open(song("b.wav", 0.1));
    pass(999ms);
    EXPECT_FALSE(hasEnded(first));
    pass(1ms);
    EXPECT_TRUE(comesTrue([&] { return hasEnded(first); }));
    // No longer: the other one starts in real time, and would soon seem to stand still.
    EXPECT_TRUE(reaches(player, PlayState::stopped));
    EXPECT_EQ(player.failure(), std::nullopt);
}

TEST_F(PlayerProcessTest, OneThatDiesAtRestIsReplacedByTheNextSong) {
    PlayerControl player(loop, playing(fastSink), tell);
    ASSERT_TRUE(isPlayedToItsEnd(player, song("a.wav", 0.1)));
    ::kill(newChild(before), SIGKILL);
    EXPECT_TRUE(comesInTime([&] { return newChild(before) == 0; }, 100ms)) << "nor is it yet";
    EXPECT_EQ(player.failure(), std::nullopt);
    EXPECT_TRUE(isPlayedToItsEnd(player, song("b.wav", 0.1)));
}

TEST_F(PlayerProcessTest, IsRenewedBetweenSongsBeforeItGrows) {
    const std::string path = song("a.wav", 0.1);
    for (const auto& [mostSongs, count] : {std::pair(4, 3u), {500, 1u}}) {
        SCOPED_TRACE(mostSongs);
        before = childProcesses();
        auto renewed = playing();
        renewed.mostSongs = mostSongs;
        PlayerControl player(loop, renewed, tell);
        std::set<pid_t> processes;
        for (int played = 0; played < 9; ++played) {
            EXPECT_TRUE(isPlayedToItsEnd(player, path));
            EXPECT_TRUE(comesInTime( // the older one is gone
                [&] { return childProcesses().size() == before.size() + 1; }, 100ms));
            processes.insert(newChild(before));
            pass(15s);
        }
        EXPECT_EQ(processes.size(), count);
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
    EXPECT_EQ(lost, "the player stood still\n") << "its song is to blame, and gets no other one";
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
    const pid_t paused = newChild(before);
    EXPECT_NE(paused, 0); // a paused song is no rest
    int asleep = 0;       // one look after the other
    EXPECT_TRUE(
        comesTrue([&] { return (asleep = stateOf(paused) == 'S' ? asleep + 1 : 0) == 20; }));
    startLong(player);
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
    EXPECT_TRUE(comesTrue([&] { return stateOf(started) == 'S'; }));
    stop(started); // as one that hangs
    ::kill(program, SIGKILL);
    ::waitpid(program, nullptr, 0);
    EXPECT_TRUE(comesTrue([&] { return hasEnded(started); }));
}

// Its start takes so long that a program which waits has to see it get on. Later it says only what
// is new.
TEST_F(PlayerProcessTest, SaysHowFarItIsAndNoMore) {
    const auto process = PlayerProcess::start(LARKSPIN_PLAYER, {clockedSink, disk.path().native()});
    const PlayerWishes wishes{.song = 1, .hasFile = true};
    const OpenedFile opened = openToRead(nativePath(song("a.wav", 0.5)));
    std::vector<PlayerReport> reports;
    EXPECT_TRUE(process->send(wishes, opened.file));
    EXPECT_TRUE(comesTrue([&] {
        while (const auto report = process->receive())
            reports.push_back(*report);
        return !reports.empty() && reports.back().phase == SongPhase::ended;
    }));
    ASSERT_GE(reports.size(), 4u);
    for (std::uint8_t at = 0; at < startSteps; ++at)
        EXPECT_EQ(reports[at].start, at + 1);
    EXPECT_LE(reports.size(), 9u);
}

TEST_F(PlayerProcessTest, InheritsTheSocketAndNoMore) {
    const int ours = ::open("/dev/zero", O_RDONLY); // without O_CLOEXEC
    ::setenv("LARKSPIN_SECRET", "1", 1);
    ::setenv("PULSE_COOKIE", "/nowhere", 1);
    sigset_t all, old;
    sigfillset(&all);
    ::pthread_sigmask(SIG_BLOCK, &all, &old);
    ::signal(SIGUSR1, SIG_IGN);
    PlayerControl player(loop, playing(clockedSink), tell);
    const fs::path proc = "/proc/" + std::to_string(startLong(player));
    ::signal(SIGUSR1, SIG_DFL);
    ::pthread_sigmask(SIG_SETMASK, &old, nullptr);
    ::unsetenv("PULSE_COOKIE");
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
    const std::string limits = disk.read(proc / "limits");
    EXPECT_NE(limits.find("Max core file size        0 "), limits.npos) << limits;
    EXPECT_EQ(limits.find("Max data size             unlimited"), limits.npos) << limits;
    EXPECT_EQ(told, "") << "that it isn't confined";
    EXPECT_EQ(variables.find("LARKSPIN_SECRET"), variables.npos);
    EXPECT_NE(variables.find("PULSE_COOKIE"), variables.npos);
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
