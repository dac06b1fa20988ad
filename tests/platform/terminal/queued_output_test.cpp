// Output into pipes that are read slowly, late or never.
#include "platform/terminal/queued_output.h"
#include "support/pipe.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace larkspin {
namespace {

using namespace std::chrono_literals;

struct QueuedOutputTest : testing::Test {
    QueuedOutputTest() {
        output.afterDrops([this](int count) { dropped += count; });
        output.whenTaken([this] { ++taken; });
    }
    // Puts lines of a thousand bytes until so many bytes have been put, and returns them.
    std::string put(std::size_t size) {
        std::string all;
        for (int number = 0; all.size() < size; ++number) {
            const std::string line = std::to_string(number) + std::string(995, '.') + '\n';
            output.put(line);
            all += line;
        }
        return all;
    }
    // All that can be had while the loop serves the queue.
    std::string readAll() {
        std::string all;
        for (int quiet = 0; quiet < 3; ++quiet) {
            const std::string part = pipe.readNow();
            quiet = part.empty() ? quiet : 0;
            all += part;
            loop.waitUntil(loop.now() + 1ms);
        }
        return all;
    }

    Pipe pipe;
    PollLoop loop;
    QueuedOutput output{loop, pipe.in()};
    int dropped = 0, taken = 0;
};

TEST_F(QueuedOutputTest, LosesNothingBelowItsBoundNorOfOneText) {
    std::string all = put(QueuedOutput::bound);
    EXPECT_EQ(readAll(), all);
    EXPECT_EQ(dropped, 0);
    EXPECT_EQ(taken, 1);
    EXPECT_EQ(::fcntl(pipe.in(), F_GETFL) & O_NONBLOCK, 0) << "others write on it as well";
    all.assign(5 * QueuedOutput::bound, 'x');
    output.put(all);
    EXPECT_EQ(readAll(), all);
    ::fcntl(pipe.in(), F_SETFL, O_NONBLOCK); // as others may do
    all = put(300'000);
    EXPECT_EQ(readAll(), all);
}

TEST_F(QueuedOutputTest, PastItsBoundDropsWholeLinesAndTellsHowManyWhenTheyAreReadAgain) {
    const std::string all = put(3 * QueuedOutput::bound);
    loop.waitUntil(loop.now() + 5ms);
    EXPECT_EQ(dropped, 0);
    const std::string read = readAll();
    EXPECT_TRUE(all.starts_with(read));
    EXPECT_TRUE(read.ends_with('\n'));
    EXPECT_GE(read.size(), QueuedOutput::bound);
    EXPECT_LT(read.size(), 2 * QueuedOutput::bound);
    EXPECT_EQ(dropped, (all.size() - read.size()) / 1000);
    output.put("again\n");
    EXPECT_EQ(readAll(), "again\n");
}

// However much others say: it is told where theirs is missing, and only there.
TEST_F(QueuedOutputTest, KeepsTheOwnersLinesInAFloodOfOthers) {
    std::string expected;
    output.afterDrops([this](int count) { output.put(std::to_string(count) + " gone\n"); });
    const std::string line = std::string(999, '.') + '\n';
    const auto flood = [&](int lines) {
        for (int number = 0; number < lines; ++number)
            output.putOfOthers(line);
    };
    flood(3000);
    output.put("first answer\n");
    flood(5);
    output.put("second answer\n");
    output.put("third answer\n");
    flood(7);
    const std::string all = readAll();
    const std::size_t kept = all.find("\n") == 999 ? all.find(" gone") / 1000 : 0;
    EXPECT_GE(kept * 1000, QueuedOutput::boundOfOthers);
    EXPECT_EQ(all.substr(kept * 1000), std::to_string(3000 - kept) +
                                           " gone\nfirst answer\n5 gone\nsecond answer\n"
                                           "third answer\n7 gone\n");
}

TEST_F(QueuedOutputTest, ForgetsAReaderThatHasGone) {
    std::signal(SIGPIPE, SIG_IGN);
    put(100'000);
    pipe.closeOut();
    loop.waitUntil(loop.now() + 5ms);
    EXPECT_EQ(output.busyUntil(), Nanoseconds::min());
    put(3 * QueuedOutput::bound);
    EXPECT_EQ(dropped, 0);
}

TEST_F(QueuedOutputTest, TheEndWaitsForNobodyWhoTakesNothing) {
    put(QueuedOutput::bound);
    std::chrono::milliseconds waited{};
    output.finish([&](int descriptor, std::chrono::milliseconds longest) {
        waited += longest;
        return QueuedOutput::waitForReader(descriptor, 0ms);
    });
    EXPECT_LT(waited, 1s);
}

// However long all of it takes, and however seldom a busy machine lets him have his turn.
TEST_F(QueuedOutputTest, TheEndWaitsForAReaderWhoGoesOnTaking) {
    const std::string all = put(500'000);
    std::string read;
    output.finish([&](int descriptor, std::chrono::milliseconds longest) {
        EXPECT_GE(longest, 800ms);
        char page[4096];
        const ssize_t count = ::read(pipe.out(), page, sizeof page);
        read.append(page, static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        return QueuedOutput::waitForReader(descriptor, 0ms);
    });
    read += pipe.readNow();
    EXPECT_EQ(read, all);
}

TEST_F(QueuedOutputTest, IsBusyWhileItsReaderMayStillCome) {
    EXPECT_EQ(output.busyUntil(), Nanoseconds::min());
    const auto begin = loop.now();
    put(300'000);
    EXPECT_GT(output.busyUntil(), begin);
    EXPECT_LT(output.busyUntil(), loop.now() + 1s);
    readAll();
    EXPECT_EQ(output.busyUntil(), Nanoseconds::min());
}

// As after `su`, where its owner's terminal can't be opened by its own name. Blocked it would be
// ended by the alarm.
[[noreturn]] void writeToAnothersTerminal() {
    ::alarm(10);
    const int screen = ::posix_openpt(O_RDWR | O_NOCTTY);
    ::unlockpt(screen);
    const std::string name = ::ptsname(screen);
    ::setsid();
    const int terminal = ::open(name.c_str(), O_RDWR);
    ::chmod(name.c_str(), 0);
    constexpr uid_t nobody = 65534;
    if (::geteuid() == 0)
        (void)::seteuid(nobody);
    PollLoop loop;
    QueuedOutput output(loop, terminal);
    output.put("x"); // so that what it takes is no multiple of a page
    output.put(std::string(1'000'000, 'x'));
    std::_Exit(output.isTaken() ? 1 : 0);
}

TEST(QueuedOutputElsewhere, DoesNotWaitForAnothersTerminal) {
    EXPECT_EXIT(writeToAnothersTerminal(), testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace larkspin
