// seccomp's part of the confinement: which calls this process can't make to the kernel. A refused
// call fails as if it weren't permitted, so that libraries go on without it.
#include "platform/gstreamer/confinement.h"

#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <sched.h>
#include <seccomp.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace larkspin {

namespace {

constexpr const char* refused[] = {
    // other programs
    "execve", "execveat", "uselib", "fork", "vfork",
    // ways out: those to the sound server and to who started this process are open
    "socket", "connect", "bind", "listen", "accept", "accept4",
    // other processes
    "ptrace", "process_vm_readv", "process_vm_writev", "process_madvise", "process_mrelease",
    "pidfd_open", "pidfd_getfd", "pidfd_send_signal", "kill", "tkill", "rt_sigqueueinfo",
    "rt_tgsigqueueinfo", "kcmp", "migrate_pages", "move_pages", "setpriority", "ioprio_set",
    "sched_setaffinity", "sched_setparam", "sched_setscheduler",
    // what other processes share
    "mq_open", "mq_unlink", "msgget", "msgctl", "msgsnd", "msgrcv", "semget", "semctl", "shmget",
    "shmat", "shmctl",
    // files, other than to read and to write them
    "chmod", "fchmod", "fchmodat", "chown", "chown32", "fchown", "fchown32", "lchown", "lchown32",
    "fchownat", "utime", "utimes", "utimensat", "utimensat_time64", "futimesat", "setxattr",
    "lsetxattr", "fsetxattr", "getxattr", "lgetxattr", "fgetxattr", "listxattr", "llistxattr",
    "flistxattr", "removexattr", "lremovexattr", "fremovexattr", "link", "linkat", "symlink",
    "symlinkat", "rename", "renameat", "renameat2", "unlink", "unlinkat", "mkdir", "mkdirat",
    "rmdir", "mknod", "mknodat", "truncate", "truncate64", "inotify_init", "inotify_init1",
    "inotify_add_watch", "fanotify_init", "fanotify_mark", "name_to_handle_at", "open_by_handle_at",
    "quotactl", "quotactl_fd",
    // another view of the system, other rights
    "unshare", "setns", "chroot", "pivot_root", "mount", "umount", "umount2", "fsopen", "fspick",
    "fsconfig", "fsmount", "move_mount", "open_tree", "mount_setattr", "personality", "setuid",
    "setuid32", "setgid", "setgid32", "setreuid", "setreuid32", "setregid", "setregid32",
    "setresuid", "setresuid32", "setresgid", "setresgid32", "setfsuid", "setfsuid32", "setfsgid",
    "setfsgid32", "setgroups", "setgroups32", "capset", "setsid", "setpgid",
    // roads into the kernel that strangers are fond of
    "io_uring_setup", "io_uring_enter", "io_uring_register", "bpf", "perf_event_open",
    "userfaultfd", "keyctl", "add_key", "request_key", "lookup_dcookie", "modify_ldt", "iopl",
    "ioperm", "vm86", "vm86old", "io_setup", "io_submit", "memfd_secret", "vhangup", "nfsservctl",
    // the machine
    "acct", "swapon", "swapoff", "reboot", "kexec_load", "kexec_file_load", "init_module",
    "finit_module", "delete_module", "syslog", "settimeofday", "clock_settime", "clock_settime64",
    "adjtimex", "clock_adjtime", "clock_adjtime64", "stime", "sethostname", "setdomainname"};

// The numbers of calls that are too new to have a name in the library. They fail as on an older
// kernel.
constexpr int firstUnknownCall = 451, afterUnknownCalls = 512;

constexpr unsigned long newNamespaces[] = {CLONE_NEWNS,  CLONE_NEWUTS, CLONE_NEWIPC, CLONE_NEWUSER,
                                           CLONE_NEWPID, CLONE_NEWNET, 0x02000000 /* cgroup */};

// Kinds of ioctl(2) that change what a file is, not what is in it; and some that type into a
// terminal.
constexpr unsigned fileKinds[] = {'f', 'X', 'v', 0x94};
constexpr unsigned typingCalls[] = {TIOCSTI, 0x541C /* TIOCLINUX */};

class Filter {
public:
    bool isWhole() const { return filter_ && isWhole_; }

    void refuse(const char* name, std::initializer_list<scmp_arg_cmp> when = {}) {
        refuse(seccomp_syscall_resolve_name(name), EPERM, when);
    }

    // A name that is unknown on this machine, or to this version of the library, doesn't matter.
    void refuse(int call, int error, std::initializer_list<scmp_arg_cmp> when = {}) {
        if (!filter_ || call == __NR_SCMP_ERROR)
            return;
        const int result = seccomp_rule_add_array(filter_.get(), SCMP_ACT_ERRNO(error), call,
                                                  static_cast<unsigned>(when.size()), when.begin());
        // EDOM: this kind of machine has no such call. EEXIST: the rule is there already.
        isWhole_ &= result == 0 || result == -EDOM || result == -EEXIST;
    }

    bool enforce() {
        return isWhole() && seccomp_attr_set(filter_.get(), SCMP_FLTATR_CTL_TSYNC, 1) == 0 &&
               seccomp_load(filter_.get()) == 0;
    }

private:
    struct Release {
        void operator()(void* filter) const { seccomp_release(filter); }
    };
    std::unique_ptr<void, Release> filter_{seccomp_init(SCMP_ACT_ALLOW)};
    bool isWhole_ = true;
};

scmp_arg_cmp is(unsigned argument, scmp_datum_t value) {
    return scmp_arg_cmp{argument, SCMP_CMP_MASKED_EQ, 0xFFFFFFFF, value};
}

scmp_arg_cmp isNot(unsigned argument, scmp_datum_t value) {
    return scmp_arg_cmp{argument, SCMP_CMP_NE, value, 0};
}

scmp_arg_cmp hasBits(unsigned argument, scmp_datum_t mask, scmp_datum_t bits) {
    return scmp_arg_cmp{argument, SCMP_CMP_MASKED_EQ, mask, bits};
}

void refuseProcesses(Filter& filter) {
#ifdef __s390__
    constexpr unsigned flags = 1;
#else
    constexpr unsigned flags = 0;
#endif
    filter.refuse("clone", {hasBits(flags, CLONE_THREAD, 0)});
    for (const unsigned long space : newNamespaces)
        filter.refuse("clone", {hasBits(flags, space, space)});
    // The flags of clone3 lie in memory, where a filter can't look. When it seems to be missing,
    // the C library makes threads by clone.
    filter.refuse(seccomp_syscall_resolve_name("clone3"), ENOSYS);
    // abort(3) sends a signal to this process itself.
    filter.refuse("tgkill", {isNot(0, static_cast<scmp_datum_t>(::getpid()))});
    filter.refuse("prlimit64", {isNot(0, 0)});
    filter.refuse("prctl", {is(0, PR_SET_PDEATHSIG)});
}

// GStreamer wakes itself up by a pair of stream sockets, which lead nowhere else. A pair of another
// type could be used to send to other addresses.
void refusePairs(Filter& filter) {
    constexpr unsigned typeMask = 0xF;
    for (unsigned type = 0; type <= typeMask; ++type)
        if (type != SOCK_STREAM)
            filter.refuse("socketpair", {hasBits(1, typeMask, type)});
    filter.refuse("socketpair", {isNot(0, AF_UNIX)});
}

void refuseControls(Filter& filter) {
    for (const unsigned kind : fileKinds)
        filter.refuse("ioctl", {hasBits(1, 0xFF00, kind << 8)});
    for (const unsigned call : typingCalls)
        filter.refuse("ioctl", {is(1, call)});
    filter.refuse("fcntl", {is(1, F_SETLEASE)});
    filter.refuse("fcntl64", {is(1, F_SETLEASE)});
}

} // namespace

bool closeCalls() {
    Filter filter;
    for (const char* name : refused)
        filter.refuse(name);
    refuseProcesses(filter);
    refusePairs(filter);
    refuseControls(filter);
    for (int call = firstUnknownCall; call < afterUnknownCalls; ++call)
        filter.refuse(call, ENOSYS);
    return filter.enforce();
}

} // namespace larkspin
