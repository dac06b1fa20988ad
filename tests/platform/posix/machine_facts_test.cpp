// What the machine tells of itself.
#include "platform/posix/posix_machine_facts.h"

#include "platform/posix/disk_questions.h"
#include "platform/posix/drive_paths.h"
#include "platform/posix/local_time.h"
#include "support/temp_directory.h"

#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>

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
    OwnersDisk asked(answersFrom(PosixFiles(), PosixDirectories()));
    PosixMachineFacts facts(asked, [] { return DisplaySize{8, 80, 24}; });
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

} // namespace
} // namespace larkspin
