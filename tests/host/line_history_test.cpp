#include "host/line_history.h"

#include "platform/posix/drive_paths.h"
#include "platform/posix/posix_files.h"
#include "support/temp_directory.h"

#include <gtest/gtest.h>

namespace larkspin {
namespace {

using Kept = std::deque<std::string>;

struct LineHistoryTest : testing::Test {
    LineHistory history() { return {files, drivePath((disk.path() / "history.txt").native())}; }

    TempDirectory disk;
    PosixFiles files;
};

TEST_F(LineHistoryTest, OutlivesItsRun) {
    LineHistory first = history();
    for (const char* line : {"'play \u00E4", "'stop", "'stop", "", "two\nlines", " /JOIN #a  key",
                             "/join #a ", "/msg NickServ identify hush"})
        first.add(line);
    EXPECT_EQ(first.lines().back(), "/msg NickServ identify ****");
    first.save();
    LineHistory second = history();
    EXPECT_EQ(second.lines(), (Kept{"'play \u00E4", "'stop", "/join #a "}));
    second.save();
    for (int line = 0; line < 500; ++line)
        second.add(std::to_string(line));
    EXPECT_EQ(second.lines().size(), 500u);
    EXPECT_EQ(second.lines().front(), "0");
}

TEST_F(LineHistoryTest, LosesSecretsThatAFormerVersionKept) {
    disk.write("history.txt", "'a\n/oper jo hush\n");
    history().save();
    EXPECT_EQ(disk.read("history.txt"), "'a\n");
}

TEST_F(LineHistoryTest, TakesOnlyWhatCanBeTyped) {
    disk.write("history.txt", std::string("\xff\n") + std::string(1001, 'x') + "\n\n'a\r\n'b\n'c");
    EXPECT_EQ(history().lines(), (Kept{"'b", "'c"}));
}

TEST_F(LineHistoryTest, LeavesAFileAloneThatItCantRead) {
    std::filesystem::create_directory(disk.path() / "history.txt");
    LineHistory lines = history();
    std::filesystem::remove(disk.path() / "history.txt");
    lines.add("'stop");
    lines.save();
    EXPECT_FALSE(std::filesystem::exists(disk.path() / "history.txt"));
}

} // namespace
} // namespace larkspin
