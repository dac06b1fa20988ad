// What the machine tells of itself.
#include "platform/posix/posix_machine_facts.h"

#include "platform/posix/drive_paths.h"
#include "support/temp_directory.h"

#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace larkspin {
namespace {

using namespace std::chrono_literals;

TEST(MachineFacts, ReadsTheSystemsNameAsAShellDoes) {
    const std::vector<std::pair<std::string, std::string>> releases{
        {"PRETTY_NAME=\"no\"\nNAME=\"Debian GNU/Linux\"\nVERSION_ID=\"12\"\n",
         "debian gnu/linux 12"},
        {"NAME='Arch Linux'", "arch linux"},
        {"#NAME=x\n NAME=x\nVERSION_ID=9 # nine\nNAME=Fedora\r\nNAME_2=x", "fedora 9"},
        {R"(NAME="a \"b\" \$c")", "a \"b\" $c"},
        {R"(NAME='a\b'"C"d)", "a\\bcd"},
        {"NAME=\"never closed", "never closed"},
        {"NAME=\\", "\\"},
        {"", "linux"}};
    for (const auto& [release, name] : releases)
        EXPECT_EQ(systemNameIn(release), name) << release;
}

TEST(MachineFacts, TellsOfThisMachine) {
    PosixMachineFacts facts([] { return DisplaySize{8, 80, 24}; });
    EXPECT_NE(facts.systemName(), "");
    EXPECT_GT(facts.memoryBytes(), 1u << 20);
    EXPECT_GT(facts.uptime(), 1s);
    EXPECT_EQ(facts.display().width, 80);
    const TempDirectory disk;
    disk.write("file", "x");
    const std::string native = disk.path().native();
    const std::string places[] = {native, drivePath(native), "c:\\", "C:", "/", "~"};
    for (const auto& place : places)
        EXPECT_GT(facts.driveSpace(place).value_or(DriveSpace{}).total, 0U) << place;
    const std::string none[] = {"",
                                "q:\\",
                                "tmp",
                                native + "/file",
                                native + "/no",
                                std::string("/\0", 2),
                                "/" + std::string(100000, 'x')};
    for (const auto& place : none)
        EXPECT_FALSE(facts.driveSpace(place)) << place.substr(0, 50);
}

std::ptrdiff_t descriptors() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

TEST(DiskSpace, ADiskThatHangsHangsNobodyAndLeavesNothingBehind) {
    DiskSpace hangs(50ms, [](const char*, DriveSpace&) {
        ::pause();
        return true;
    });
    const auto before = descriptors();
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_FALSE(hangs.of("/"));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 300ms);
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "a child is left, alive or dead";
    EXPECT_EQ(descriptors(), before);
}

TEST(DiskSpace, TheOneThatAsksHoldsNothingOpenAndMayDie) {
    EXPECT_TRUE(DiskSpace(5s, [](const char*, DriveSpace& space) {
                    for (int number = 1; number < 1024; ++number)
                        space.total += ::fcntl(number, F_GETFD) >= 0;
                    return space.total == 0;
                }).of("/"));
    EXPECT_FALSE(DiskSpace(5s, [](const char*, DriveSpace&) -> bool { ::_exit(1); }).of("/"));
    DiskSpace space;
    const auto before = descriptors();
    for (int i = 0; i < 50; ++i)
        ASSERT_TRUE(space.of("/")) << i;
    EXPECT_EQ(descriptors(), before);
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
}

} // namespace
} // namespace larkspin
