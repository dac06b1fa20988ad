#include "app/program.h"
#include "platform/posix/posix_process.h"
#include "support/talk.h"

#include <algorithm>
#include <csignal>
#include <set>
#include <sstream>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace larkspin {

namespace {

// Two runs, which write settings, counts and lists.
[[noreturn]] void live(VirtualMachine& machine, int life) {
    machine.start();
    machine.owner("'cont");
    machine.owner("'num " + std::to_string(life % 3 + 1), 25s);
    machine.owner("'volume " + std::to_string(life % 101));
    machine.owner("'trig .");
    machine.restart();
    machine.says({".trig '", "'exit"});
    ::_exit(0);
}

// A child that lives up to that moment of its own, or to its end, which is told. Each time that a
// file is written, or gets its name, counts for two moments: one before it and one after it.
bool comesToItsEnd(VirtualMachine& machine, int moment) {
    const pid_t child = ::fork();
    if (child == 0) {
        ::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
        ::raise(SIGSTOP);
        live(machine, moment);
    }
    int status = 0;
    for (bool counts = false; ::waitpid(child, &status, 0) == child && WIFSTOPPED(status);) {
        ::ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD);
        __ptrace_syscall_info call{};
        ::ptrace(PTRACE_GET_SYSCALL_INFO, child, sizeof call, &call);
        if (call.op == PTRACE_SYSCALL_INFO_ENTRY)
            counts = call.entry.nr == SYS_write || call.entry.nr == SYS_fsync ||
                     call.entry.nr == SYS_linkat;
        if (counts && call.op != PTRACE_SYSCALL_INFO_NONE && moment-- == 0)
            ::kill(child, SIGKILL);
        ::ptrace(PTRACE_SYSCALL, child, nullptr, nullptr);
    }
    return WIFEXITED(status);
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
    int load = 1, moment = 0;
    for (bool ended = false; !ended && !::testing::Test::HasFailure(); ++moment) {
        SCOPED_TRACE(moment);
        ended = comesToItsEnd(machine, moment);
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
    EXPECT_GT(moment, 50);
    EXPECT_EQ(known["played.ini"].size(), 5u) << "all three songs have been counted";
    EXPECT_TRUE(PosixProcess(machine.drive("data")).claimOnlyCopy());
    const auto data = machine.disk.path() / "data";
    for (const auto& entry : std::filesystem::directory_iterator(data))
        EXPECT_FALSE(entry.path().filename().native().starts_with(".larkspin")) << entry.path();
}

} // namespace larkspin
