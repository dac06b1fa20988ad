#include "app/program.h"
#include "platform/posix/posix_process.h"
#include "support/talk.h"

#include <algorithm>
#include <csignal>
#include <random>
#include <set>
#include <sstream>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

namespace larkspin {

namespace {

// One run after the other at full speed, writing settings, counts and lists.
[[noreturn]] void live(VirtualMachine& machine) {
    for (int turn = ::getpid();; ++turn) {
        machine.start();
        machine.owner("'cont");
        machine.owner("'num " + std::to_string(turn % 3 + 1), 25s);
        machine.owner("'volume " + std::to_string(turn % 101));
        machine.owner("'trig .");
        machine.restart();
        machine.owner(".trig '");
        machine.owner("'exit");
    }
}

// A child that lives up to the given step: its steps are the entries into the kernel and the ways
// back, so that how far it comes has nothing to do with how busy the machine is.
void liveUpTo(int steps, VirtualMachine& machine) {
    const pid_t child = ::fork();
    ASSERT_NE(child, -1);
    if (child == 0) {
        ::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        ::raise(SIGSTOP);
        live(machine);
    }
    int status = 0;
    for (int step = 0; step < steps; ++step) {
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSTOPPED(status)) << "ended by itself";
        ASSERT_EQ(::ptrace(PTRACE_SYSCALL, child, nullptr, nullptr), 0);
    }
    ::kill(child, SIGKILL);
    ::waitpid(child, &status, 0);
    while (!WIFSIGNALED(status))
        ::waitpid(child, &status, 0);
}

// The header and the keys of an INI file, which must be whole and hold each of them once.
std::set<std::string> keys(const std::string& contents) {
    std::set<std::string> found;
    std::istringstream lines(contents);
    for (std::string line; std::getline(lines, line);) {
        EXPECT_TRUE(line.ends_with('\r')) << contents;
        EXPECT_TRUE(found.insert(line.substr(0, line.find('='))).second) << line << contents;
    }
    EXPECT_TRUE(contents.starts_with('[')) << contents;
    EXPECT_TRUE(contents.ends_with('\n')) << contents;
    return found;
}

constexpr unsigned mostSteps = 1200; // as many as two lives take

} // namespace

TEST(Kill, LeavesEveryFileWholeAtAnyMoment) {
    VirtualMachine machine; // each child has its own copy, on the same disk
    machine.playlist({"a.mp3", "b.mp3", "c.mp3"}, 10s);
    machine.writeDataFile("larkspin.ini", "[lark]\r\nload=1\r\ntrigger='\r\n");
    machine.writeDataFile("played.ini", "[times played]\r\nother.mp3=1\r\n");
    machine.writeDataFile("larkmain.lpb", "a note\r\n");
    const std::string list = machine.dataFile("temp.lst");
    std::map<std::string, std::set<std::string>> known{
        {"larkspin.ini", {"[lark]\r", "load", "trigger"}},
        {"played.ini", {"[times played]\r", "other.mp3"}}};
    int load = 1;
    std::mt19937 chance(1);
    for (int round = 0; round < 250 && !::testing::Test::HasFailure(); ++round) {
        ASSERT_NO_FATAL_FAILURE(liveUpTo(static_cast<int>(chance() % mostSteps), machine));
        EXPECT_EQ(machine.dataFile("temp.lst"), list);
        EXPECT_EQ(machine.dataFile("larkmain.lpb"), "a note\r\n");
        for (auto& [file, before] : known) {
            auto now = keys(machine.dataFile(file));
            EXPECT_TRUE(std::includes(now.begin(), now.end(), before.begin(), before.end()));
            before.swap(now);
        }
        EXPECT_GE(std::stoi(machine.setting("load")), load);
        load = std::stoi(machine.setting("load"));
    }
    EXPECT_GE(known["played.ini"].size(), 4u) << "the children have got that far";
    EXPECT_TRUE(PosixProcess(machine.drive("data")).claimOnlyCopy());
    const auto data = machine.disk.path() / "data";
    for (const auto& entry : std::filesystem::directory_iterator(data))
        EXPECT_FALSE(entry.path().filename().native().starts_with(".larkspin")) << entry.path();
}

} // namespace larkspin
