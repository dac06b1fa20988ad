// Files that are never opened, as on a disk that is gone: whoever opens them is no part of the
// program.
#include "support/pipe.h"
#include "support/real_player.h"

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <iterator>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace larkspin {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;

struct SongOpeningTest : RealPlayer {
    // Whoever opens what is gone waits until the gate is opened.
    DiskWorker::Answer hanging() const {
        EXPECT_EQ(::mkfifo(gate.c_str(), 0600), 0);
        return [gate = gate,
                answer = answersFrom(PosixFiles(), PosixDirectories())](std::string_view question) {
            char byte = 0;
            if (question.find("gone.wav") != question.npos)
                (void)!::read(Descriptor(::open(gate.c_str(), O_RDONLY)).number(), &byte, 1);
            return answer(question);
        };
    }
    void openGate() const {
        const Descriptor other(::open(gate.c_str(), O_RDWR | O_CLOEXEC));
        fs::remove(gate);
    }
    static std::ptrdiff_t threads() {
        return std::distance(fs::directory_iterator("/proc/self/task"), {});
    }

    const fs::path gate = disk.path() / "gate";
};

// A disk that is gone: whoever opens the file waits for ever.
TEST_F(SongOpeningTest, AFileThatIsNeverOpenedIsGivenUp) {
    OwnersDisk dead(hanging());
    fs::create_directory(disk.path() / "away");
    const std::string good = song("a.wav", 0.1), missing = song("away/gone.wav", 0.1);
    PlayerControl player(loop, {LARKSPIN_PLAYER, {fastSink, disk.path().native()}, dead}, tell);
    ASSERT_TRUE(isPlayedToItsEnd(player, good));
    const auto threadsBefore = threads();
    player.Open(missing);
    EXPECT_EQ(player.PlayState(), PlayState::waiting);
    EXPECT_LE(threads(), threadsBefore) << "one that hangs would hold up the program's end";
    EXPECT_TRUE(isPlayedToItsEnd(player, good));
    EXPECT_FALSE(dead.isHung(disk.path() / "away")) << "it may be slow";
    player.Open(missing);
    pass(6s);
    EXPECT_EQ(player.PlayState(), PlayState::stopped);
    EXPECT_EQ(player.failure(), "the disk doesn't answer");
    EXPECT_TRUE(dead.isHung(disk.path() / "away")) << "as every other question learns";
    const auto children = childProcesses().size();
    for (int count = 0; count < 20; ++count)
        player.Open(missing);
    EXPECT_EQ(childProcesses().size(), children);
    pass(2s);
    EXPECT_EQ(player.failure(), "the disk doesn't answer");
    EXPECT_TRUE(isPlayedToItsEnd(player, good));
    openGate();
    EXPECT_TRUE(comesTrue([&] { return !dead.isHung(disk.path() / "away"); }));
    EXPECT_TRUE(isPlayedToItsEnd(player, missing));
}

TEST_F(SongOpeningTest, EachSlowDiskGetsItsTimeUntilTooManyAreSlow) {
    OwnersDisk slow(hanging());
    PlayerControl player(loop, {LARKSPIN_PLAYER, {fastSink, disk.path().native()}, slow}, tell);
    ASSERT_TRUE(isPlayedToItsEnd(player, song("a.wav", 0.1)));
    const auto open = [&](int number) {
        fs::create_directory(disk.path() / std::to_string(number));
        player.Open(song(std::to_string(number) + "/gone.wav", 0.1));
    };
    open(0);
    pass(6s);
    EXPECT_EQ(player.failure(), "the disk doesn't answer");
    for (int number = 1; number <= 8; ++number)
        open(number);
    pass(2s);
    EXPECT_EQ(player.PlayState(), PlayState::waiting);
    const auto asked = childProcesses().size();
    open(9);
    EXPECT_EQ(childProcesses().size(), asked);
    pass(2s);
    EXPECT_EQ(player.failure(), "the disk doesn't answer");
}

// Whoever was asked may have died long before that. Who dies each time dies of the file.
TEST_F(SongOpeningTest, AFileIsAskedForOnceMore) {
    OwnersDisk deadly(
        [answer = answersFrom(PosixFiles(), PosixDirectories())](std::string_view question) {
            if (question.find("deadly.wav") != question.npos)
                ::_exit(1);
            return answer(question);
        });
    const std::string good = song("a.wav", 0.1), bad = song("deadly.wav", 0.1);
    PlayerControl player(loop, {LARKSPIN_PLAYER, {fastSink, disk.path().native()}, deadly}, tell);
    for (int round = 0; round < 2; ++round) {
        player.Open(bad);
        pass(2s);
        EXPECT_TRUE(reaches(player, PlayState::stopped));
        EXPECT_EQ(player.failure(), "the disk doesn't answer");
        EXPECT_TRUE(isPlayedToItsEnd(player, good));
    }
}

// Nor does what still hangs keep anything of the program's, such as the lock of the only copy.
TEST_F(SongOpeningTest, TheProgramsEndWaitsForNoFile) {
    Pipe pipe;
    const auto answer = hanging();
    const std::string missing = song("gone.wav", 0.1);
    const pid_t program = ::fork();
    if (program == 0) {
        OwnersDisk dead([&](std::string_view question) {
            ::prctl(PR_SET_PDEATHSIG, 0); // who hangs in the system can't even be killed
            return answer(question);
        });
        PlayerControl player(loop, {LARKSPIN_PLAYER, {fastSink, disk.path().native()}, dead}, tell);
        player.Open(missing);
        pipe.write(player.PlayState() == PlayState::waiting ? "w" : "?");
        ::pause();
        ::_exit(0);
    }
    const Descriptor opened(::open(gate.c_str(), O_WRONLY | O_CLOEXEC)); // once somebody hangs
    EXPECT_EQ(pipe.readSoon(), "w");
    ::kill(program, SIGTERM);
    ::waitpid(program, nullptr, 0);
    pipe.closeIn();
    pollfd end{pipe.out(), 0, 0};
    EXPECT_EQ(::poll(&end, 1, 10000), 1) << "somebody still has it";
}

} // namespace
} // namespace larkspin
