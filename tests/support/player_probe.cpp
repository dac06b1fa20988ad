// A decoder in the hands of a song's maker, as far as its confinement lets it: it tries what such a
// one would do, and tells of each what came of it.
// usage: player_probe confined|free FILE SOCKET PORT ABSTRACT-NAME
#include "platform/gstreamer/confinement.h"

#include <arpa/inet.h>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <future>
#include <linux/netlink.h>
#include <sched.h>
#include <spawn.h>
#include <string>
#include <sys/ioctl.h>
#include <sys/ptrace.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <thread>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

// What fails for another reason than that it isn't allowed has come through.
void tell(const char* attack, long result) {
    const bool refused = result < 0 && (errno == EPERM || errno == EACCES || errno == ENOSYS);
    std::printf("%s: %s\n", attack, refused ? "refused" : "done");
}

struct Place {
    std::string file, socket, abstractName;
    std::uint16_t port = 0;
    int open = -1; // the file, given by somebody else
};

long listDirectory(const std::string& path) {
    DIR* const found = ::opendir(path.c_str());
    return found ? ::closedir(found) : -1;
}

long runShell() {
    const char* const command[] = {"sh", "-c", "true", nullptr};
    pid_t id = -1;
    errno = ::posix_spawn(&id, "/bin/sh", nullptr, nullptr, const_cast<char**>(command), nullptr);
    return errno == 0 ? ::waitpid(id, nullptr, 0) : -1;
}

long forkOff() {
    const pid_t id = ::fork();
    if (id == 0)
        ::_exit(0);
    return id < 0 ? -1 : ::waitpid(id, nullptr, 0);
}

long connectTo(int type, std::uint16_t port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    const int socket = ::socket(AF_INET, type, 0);
    return socket < 0 ? -1
                      : ::connect(socket, reinterpret_cast<sockaddr*>(&address), sizeof address);
}

long connectTo(int socket, const std::string& name, bool isAbstract) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    name.copy(address.sun_path + isAbstract, sizeof address.sun_path - 2);
    const std::size_t size = offsetof(sockaddr_un, sun_path) + 1 + name.size();
    return socket < 0 ? -1
                      : ::connect(socket, reinterpret_cast<sockaddr*>(&address),
                                  static_cast<socklen_t>(size));
}

long listenOnNetwork() {
    const int socket = ::socket(AF_INET, SOCK_STREAM, 0);
    return socket < 0 ? -1 : ::listen(socket, 1);
}

void tryFiles(const Place& at) {
    const char* const file = at.file.c_str();
    const std::string directory = fs::path(at.file).parent_path(), other = at.file + "2";
    tell("read", ::open(file, O_RDONLY));
    tell("read by another name", ::open(("/proc/self/root" + at.file).c_str(), O_RDONLY));
    tell("reopen", ::open(("/proc/self/fd/" + std::to_string(at.open)).c_str(), O_RDONLY));
    tell("list", listDirectory(directory));
    tell("write", ::open(file, O_WRONLY));
    tell("create", ::open(other.c_str(), O_WRONLY | O_CREAT, 0600));
    tell("truncate", ::truncate(file, 1));
    tell("rename", ::rename(file, file));
    tell("delete", ::unlink((at.file + "3").c_str()));
    tell("make a directory", ::mkdir(file, 0700));
    tell("link", ::link(file, file));
    tell("change the mode", ::chmod(file, 0600));
    tell("change the mode of the open one", ::fchmod(at.open, 0600));
    tell("change the owner", ::chown(file, ::getuid(), ::getgid()));
    tell("change the times", ::utimensat(AT_FDCWD, file, nullptr, 0));
    tell("change the times of the open one", ::futimens(at.open, nullptr));
    tell("set an attribute", ::setxattr(file, "user.a", "b", 1, 0));
    tell("set flags of the open one", ::ioctl(at.open, _IOW('f', 2, long), nullptr));
    tell("mount", ::syscall(SYS_umount2, "/nowhere", 0));
    tell("lease the open one", ::fcntl(at.open, F_SETLEASE, F_RDLCK));
    tell("type into a terminal", ::ioctl(at.open, TIOCSTI, "x"));
}

void tryProcesses() {
    const pid_t parent = ::getppid();
    tell("run a shell", runShell());
    tell("become a program", ::syscall(SYS_execve, "/bin/sh", 1, 0));
    tell("fork", forkOff());
    tell("signal", ::kill(parent, 0));
    tell("signal a thread", ::syscall(SYS_tgkill, parent, parent, 0));
    tell("trace", ::ptrace(PTRACE_PEEKDATA, ::getpid(), nullptr, nullptr));
    tell("read memory", ::syscall(SYS_process_vm_readv, ::getpid(), nullptr, 0, nullptr, 0, 0));
    tell("enter a new namespace", ::syscall(SYS_unshare, 0));
    tell("start a thread in one", ::syscall(SYS_clone, CLONE_THREAD | CLONE_NEWNET, 0, 0, 0, 0));
    tell("start a process unseen", ::syscall(SYS_clone3, nullptr, 0));
    tell("make a call that is too new to be known", ::syscall(451, -1, nullptr, nullptr, 0));
    tell("hold keys", ::syscall(SYS_keyctl, -1, 0, 0, 0, 0));
    tell("use rings", ::syscall(SYS_io_uring_setup, 0, nullptr));
    tell("load into the kernel", ::syscall(SYS_bpf, -1, nullptr, 0));
    tell("outlive its parent", ::syscall(SYS_prctl, 1, SIGKILL, 0, 0, 0)); // PR_SET_PDEATHSIG
    tell("change another's limits", ::syscall(SYS_prlimit64, parent, 7, nullptr, nullptr));
}

void tryNetwork(const Place& at) {
    tell("connect", connectTo(SOCK_STREAM, at.port));
    tell("send", connectTo(SOCK_DGRAM, at.port));
    tell("listen", listenOnNetwork());
    tell("ask the kernel's network", ::socket(AF_NETLINK, SOCK_RAW, NETLINK_ROUTE));
    tell("ask the machine around", ::socket(AF_VSOCK, SOCK_STREAM, 0));
    tell("reach the bus", connectTo(::socket(AF_UNIX, SOCK_STREAM, 0), at.socket, false));
    int pair[2];
    tell("make a pair to send by", ::socketpair(AF_UNIX, SOCK_DGRAM, 0, pair));
    tell("make a pair in a network", ::socketpair(AF_INET, SOCK_STREAM, 0, pair));
    tell("reach an abstract socket",
         connectTo(::socket(AF_UNIX, SOCK_STREAM, 0), at.abstractName, true));
}

} // namespace

int main(int count, char** arguments) {
    if (count != 6)
        return EXIT_FAILURE;
    const Place at{arguments[2], arguments[3], arguments[5],
                   static_cast<std::uint16_t>(std::atoi(arguments[4])),
                   ::open(arguments[2], O_RDONLY)};
    const int oldSocket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    const bool isConfined = std::string_view(arguments[1]) == "confined";
    bool isWhole = true;
    if (isConfined) {
        larkspin::bindToParent();
        isWhole = larkspin::closeFiles("");
    }
    std::promise<void> confined;
    std::thread older([&] { // as one of the sound server's client
        confined.get_future().wait();
        tell("connect from an older thread", connectTo(SOCK_STREAM, at.port));
    });
    if (isConfined) {
        larkspin::closeNetwork();
        isWhole = larkspin::closeCalls() && isWhole;
    }
    confined.set_value();
    older.join();
    tryFiles(at);
    tryNetwork(at);
    tell("reach the bus by an older socket", connectTo(oldSocket, at.socket, false));
    tryProcesses();
    char byte = 0;
    std::printf("read what it was given: %s\n", ::pread(at.open, &byte, 1, 0) == 1 ? "can" : "no");
    std::printf("find its libraries: %s\n",
                ::open("/etc/ld.so.cache", O_RDONLY) >= 0 ? "can" : "no");
    std::printf("all walls stand: %s\n", isWhole ? "can" : "no");
    std::fflush(stdout);
    ::_exit(EXIT_SUCCESS);
}
