#include "app/program.h"
#include "platform/posix/posix_process.h"
#include "support/talk.h"

#include <algorithm>
#include <csignal>
#include <random>
#include <set>
#include <sstream>
#include <sys/wait.h>
#include <thread>
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
        const pid_t child = ::fork();
        ASSERT_NE(child, -1);
        if (child == 0)
            live(machine);
        std::this_thread::sleep_for(std::chrono::microseconds(chance() % 16'000));
        ::kill(child, SIGKILL);
        ::waitpid(child, nullptr, 0);
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
