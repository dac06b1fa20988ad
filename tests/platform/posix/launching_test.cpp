// Real programs of a temporary disk, started as the launcher starts them.
#include "platform/posix/posix_launching.h"

#include "platform/posix/drive_paths.h"
#include "support/temp_directory.h"

#include <csignal>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace larkspin {
namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;
namespace fs = std::filesystem;

// Tells how it was started, as lines of key and value.
constexpr auto teller = R"sh(#!/bin/sh
while read -r key value; do
  case $key in SigBlk: | SigIgn:) eval "${key%:}=$value" ;; esac
done < /proc/$$/status # without a child, for which a shell blocks signals
read -r _ _ _ _ _ session _ < /proc/$$/stat
streams=$(for fd in 0 1 2 50; do echo "fd$fd $(/bin/readlink /proc/$$/fd/$fd)"; done)
{ echo "tool ${0##*/}"; echo "count $#"; echo "argument $1"; echo "variable $LARKSPIN_TEST"
  echo "directory $(/bin/pwd)"; echo "own-session $((session == $$))"; echo "$streams"
  echo "SigBlk $SigBlk"; echo "SigIgn $SigIgn"
} > )sh";

struct PosixLaunchingTest : testing::Test {
    // Only the disk's own tools are found.
    PosixLaunchingTest() { ::setenv("PATH", native("tools").c_str(), 1); }
    ~PosixLaunchingTest() override { ::setenv("PATH", path.c_str(), 1); }

    void executable(const std::string& below, const std::string& contents) {
        disk.write(below, contents);
        fs::permissions(disk.path() / below, fs::perms::owner_all);
    }
    void tellingProgram(const std::string& below) {
        const std::string file = native("new"); // which then is there at once
        executable(below, teller + file + "\nexec /bin/mv " + file + " " + native("told") + "\n");
    }
    std::map<std::string, std::string> told() {
        const auto until = std::chrono::steady_clock::now() + 20s;
        while (!fs::exists(native("told")) && std::chrono::steady_clock::now() < until)
            std::this_thread::sleep_for(1ms);
        std::istringstream lines(disk.read("told"));
        fs::remove(native("told"));
        std::map<std::string, std::string> facts;
        for (std::string line; std::getline(lines, line);)
            facts[line.substr(0, line.find(' '))] = line.substr(line.find(' ') + 1);
        return facts;
    }
    std::string native(const std::string& below) const { return (disk.path() / below).native(); }
    std::string drive(const std::string& below) const { return drivePath(native(below)); }

    TempDirectory disk;
    const std::string path = std::getenv("PATH");
    PosixLaunching launching;
};

TEST_F(PosixLaunchingTest, StartsAProgramCleanOnItsOwn) {
    tellingProgram("apps/my app.exe");
    ::setenv("LARKSPIN_TEST", "of the owner", 1);
    ASSERT_EQ(::dup2(STDERR_FILENO, 50), 50);
    sigset_t blocked, before, after;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    ::sigprocmask(SIG_BLOCK, &blocked, &before);
    const auto handler = std::signal(SIGHUP, SIG_IGN);
    EXPECT_TRUE(launching.run(drive("apps/my app.exe")));
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "a child is left, alive or dead";
    ::sigprocmask(SIG_SETMASK, &before, &after);
    EXPECT_FALSE(sigismember(&after, SIGINT));
    std::signal(SIGHUP, handler);
    ::close(50);
    auto facts = told();
    const std::pair<const char*, std::string> expected[] = {
        {"tool", "my app.exe"},        {"count", "0"},       {"variable", "of the owner"},
        {"directory", native("apps")}, {"own-session", "1"}, {"fd0", "/dev/null"},
        {"fd1", "/dev/null"},          {"fd2", "/dev/null"}, {"fd50", ""},
        {"SigBlk", "0000000000000000"}};
    for (const auto& [key, value] : expected)
        EXPECT_EQ(facts.at(key), value) << key;
    constexpr unsigned long long ordinary = 0x7FFFFFFF; // the rest are for threads
    EXPECT_EQ(std::stoull(facts["SigIgn"], nullptr, 16) & ordinary, 0U);
}

TEST_F(PosixLaunchingTest, GivesToOthersWhatIsNoProgram) {
    for (const char* file : {"a $(touch x);'b.jpg", "c.exe"})
        disk.write(file, "picture");
    executable("d.exe", "allowed, but no program");
    EXPECT_FALSE(launching.run(drive("c.exe"))) << "nobody is there";
    EXPECT_FALSE(launching.open(drive("c.exe")));
    for (const char* tool : {"tools/xdg-open", "tools/wine", "app"})
        tellingProgram(tool);
    const auto expectGiven = [&](bool started, const char* tool, const std::string& argument) {
        EXPECT_TRUE(started);
        auto facts = told();
        EXPECT_EQ(facts["tool"], tool);
        EXPECT_EQ(facts["count"], argument.empty() ? "0" : "1");
        EXPECT_EQ(facts["argument"], argument);
    };
    for (const char* file : {"a $(touch x);'b.jpg", "d.exe", "missing"})
        expectGiven(launching.open(drive(file)), "xdg-open", native(file));
    expectGiven(launching.open("www.x.y"), "xdg-open", "http://www.x.y");
    expectGiven(launching.open("http://x.y/z?a=b&c='d"), "xdg-open", "http://x.y/z?a=b&c='d");
    for (const char* file : {"c.exe", "d.exe"})
        expectGiven(launching.run(drive(file)), "wine", native(file));
    expectGiven(launching.open(drive("app")), "app", "");
}

TEST_F(PosixLaunchingTest, SaysWhatItCannotStart) {
    disk.write("a.jpg", "picture");
    tellingProgram("tools/xdg-open");
    tellingProgram("tools/wine");
    for (const auto& path : {drive("missing.exe"), drive("tools"), "http://x.y/z.exe"s,
                             drive("a.jpg") + '\0' + ".exe"})
        EXPECT_FALSE(launching.run(path)) << path;
    for (const auto& path : {"--version"s, ""s, "http://x\0y"s})
        EXPECT_FALSE(launching.open(path)) << path;
    fs::current_path(disk.path());
    ::setenv("PATH", ":.:tools", 1);
    EXPECT_FALSE(launching.open(drive("a.jpg"))) << "a directory that goes by where we stand";
    fs::current_path("/");
}

} // namespace
} // namespace larkspin
