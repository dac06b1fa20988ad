// What a program that is started gets of this one.
#include "platform/posix/spawn.h"

#include <array>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace larkspin {
namespace {

// What a shell's line says, with this program's signals blocked and a file of its own open.
std::string said(const std::string& line, SpawnRequest request = {}) {
    std::array<int, 2> ends{};
    EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()), 0);
    const int ours = ::open("/dev/zero", O_RDONLY);
    request.program = "/bin/sh";
    request.arguments = {"-c", line};
    request.channel = ends[1];
    sigset_t all, old;
    sigfillset(&all);
    ::pthread_sigmask(SIG_BLOCK, &all, &old);
    ::signal(SIGPIPE, SIG_IGN);
    const auto id = spawn(request);
    ::signal(SIGPIPE, SIG_DFL);
    ::pthread_sigmask(SIG_SETMASK, &old, nullptr);
    ::close(ends[1]);
    ::close(ours);
    std::string text;
    char bytes[4096];
    for (ssize_t got = 0; (got = ::read(ends[0], bytes, sizeof bytes)) > 0;)
        text.append(bytes, static_cast<std::size_t>(got));
    ::close(ends[0]);
    EXPECT_TRUE(id);
    EXPECT_EQ(::waitpid(id.value_or(-1), nullptr, 0), id);
    return text;
}

TEST(Spawn, GivesNothingButWhatIsNamed) {
    EXPECT_EQ(said("readlink /proc/$$/fd/0 /proc/$$/fd/1 /proc/$$/fd/2 | cat >&3"),
              "/dev/null\n/dev/null\n/dev/null\n");
    EXPECT_EQ(said("exec ls /proc/self/fd >&3"), "0\n1\n2\n3\n4\n"); // the last is ls's own
    EXPECT_EQ(said("exec grep SigBlk /proc/self/status >&3"), "SigBlk:\t0000000000000000\n");
    EXPECT_EQ(said("kill -PIPE $$; echo ignored >&3"), "");
    EXPECT_EQ(said("exec /usr/bin/env >&3").substr(0, 4), "PWD="); // the shell's own
    EXPECT_EQ(said("echo $X >&3", {.environment = {"X=chosen"}}), "chosen\n");
}

TEST(Spawn, LeadsASessionOfItsOwnIfWished) {
    const std::string own = "[ $(cut -d' ' -f6 /proc/$$/stat) = $$ ] && echo leads >&3";
    EXPECT_EQ(said(own), "");
    EXPECT_EQ(said(own, {.newSession = true}), "leads\n");
}

TEST(Spawn, SaysWhenThereIsNoSuchProgram) {
    EXPECT_FALSE(spawn({.program = "/nowhere/program"}));
}

TEST(Spawn, FindsVariablesByNameOrByTheirBegin) {
    ::setenv("LARKSPIN_A", "1", 1);
    ::setenv("LARKSPIN_AB", "2", 1);
    using Texts = std::vector<std::string>;
    EXPECT_EQ(variables({"LARKSPIN_A"}), Texts{"LARKSPIN_A=1"});
    EXPECT_EQ(variables({"LARKSPIN_A*"}).size(), 2u);
    EXPECT_EQ(variables({"LARKSPIN"}), Texts{});
}

} // namespace
} // namespace larkspin
