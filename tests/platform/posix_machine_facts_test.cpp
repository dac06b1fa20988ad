// What the machine tells of itself.
#include "platform/posix/posix_machine_facts.h"

#include "platform/posix/drive_paths.h"
#include "platform/posix/local_time.h"
#include "support/temp_directory.h"

#include <cstdlib>
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
    const std::string places[] = {native, native + "/..", drivePath(native), "c:\\", "C:", "/",
                                  "~"};
    for (const auto& place : places)
        EXPECT_GT(facts.driveSpace(place).value_or(DriveSpace{}).total, 0U) << place;
    const double free = static_cast<double>(facts.driveSpace(native).value_or(DriveSpace{}).free);
    EXPECT_NEAR(free, static_cast<double>(std::filesystem::space(native).free), 1e8)
        << "and root's";
    const std::string tooLong(100000, 'x'), file = native + "/file", missing = native + "/no";
    for (const std::string& place : {std::string(), std::string("q:\\"), std::string("tmp"), file,
                                     missing, std::string("/\0", 2), "/" + tooLong})
        EXPECT_FALSE(facts.driveSpace(place)) << place.substr(0, 50);
}

TEST(LocalTime, FollowsTheZoneWhileTheProgramRuns) {
    const char* const before = std::getenv("TZ");
    const std::string zone = before ? before : "";
    for (const auto& [name, hour] : {std::pair("UTC-3", 3), {"UTC+5", 19}, {"UTC", 0}}) {
        ::setenv("TZ", name, 1);
        EXPECT_EQ(localTime(0).tm_hour, hour);
    }
    before ? ::setenv("TZ", zone.c_str(), 1) : ::unsetenv("TZ");
}

TEST(DiskSpace, LeavesNothingBehindWhateverTheDiskDoes) {
    const auto open = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
    };
    const auto before = open();
    DiskSpace hangs(50ms, [](const char*, DriveSpace&) { return ::pause() == 0; });
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_FALSE(hangs.of("/"));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 5s) << "the machine may be busy";
    DiskSpace dies(5s, [](const char*, DriveSpace&) -> bool { ::_exit(1); });
    EXPECT_FALSE(dies.of("/"));
    DiskSpace works(5s);
    for (int i = 0; i < 20; ++i)
        ASSERT_TRUE(works.of("/")) << i;
    EXPECT_EQ(open(), before);
    for (DiskSpace* each : {&hangs, &dies, &works}) // on a busy machine one may die late
        EXPECT_FALSE(each->of({"\0", 1}));
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "a child is left, alive or dead";
    DiskSpace holds(5s, [](const char*, DriveSpace& space) {
        for (int number = 1; number < 1024; ++number)
            space.total += ::fcntl(number, F_GETFD) >= 0;
        return space.total == 0;
    });
    EXPECT_TRUE(holds.of("/")) << "who asks keeps nothing open";
}

} // namespace
} // namespace larkspin
