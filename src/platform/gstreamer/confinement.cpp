#include "platform/gstreamer/confinement.h"

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <fcntl.h>
#include <fstream>
#include <linux/landlock.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace larkspin {

namespace {

constexpr rlim_t mostMemory = rlim_t{512} << 20; // beyond what it has at its start

// Of versions of Landlock that are newer than the system's headers.
constexpr std::uint64_t accessTruncate = 1ull << 14, scopeSignals = 1ull << 1;
constexpr int truncateSince = 3, signalsSince = 6, referSince = 2;

struct Ruleset {
    std::uint64_t files = 0, network = 0, scoped = 0;
};

std::uint64_t writing(long version) {
    std::uint64_t access = LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_REMOVE_DIR |
                           LANDLOCK_ACCESS_FS_REMOVE_FILE | LANDLOCK_ACCESS_FS_MAKE_CHAR |
                           LANDLOCK_ACCESS_FS_MAKE_DIR | LANDLOCK_ACCESS_FS_MAKE_REG |
                           LANDLOCK_ACCESS_FS_MAKE_SOCK | LANDLOCK_ACCESS_FS_MAKE_FIFO |
                           LANDLOCK_ACCESS_FS_MAKE_BLOCK | LANDLOCK_ACCESS_FS_MAKE_SYM;
    if (version >= referSince)
        access |= LANDLOCK_ACCESS_FS_REFER;
    if (version >= truncateSince)
        access |= accessTruncate;
    return access;
}

void allow(int ruleset, const char* path, std::uint64_t access) {
    const int parent = ::open(path, O_PATH | O_CLOEXEC);
    if (parent < 0)
        return;
    const landlock_path_beneath_attr rule{access, parent};
    ::syscall(SYS_landlock_add_rule, ruleset, LANDLOCK_RULE_PATH_BENEATH, &rule, 0);
    ::close(parent);
}

void denyWriting(const std::string& writableDirectory) {
    const long version =
        ::syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
    if (version < 1)
        return;
    const Ruleset rules{writing(version), 0, version >= signalsSince ? scopeSignals : 0};
    // An older kernel takes the first field alone.
    const std::size_t size = version >= signalsSince ? sizeof rules : sizeof rules.files;
    const int ruleset = static_cast<int>(::syscall(SYS_landlock_create_ruleset, &rules, size, 0));
    if (ruleset < 0)
        return;
    for (const char* path : {"/dev/snd", "/dev/null"})
        allow(ruleset, path, LANDLOCK_ACCESS_FS_WRITE_FILE);
    if (!writableDirectory.empty())
        allow(ruleset, writableDirectory.c_str(), rules.files);
    ::syscall(SYS_landlock_restrict_self, ruleset, 0);
    ::close(ruleset);
}

// Counted from what there is, since a build under sanitizers begins with terabytes.
void limitMemory() {
    std::ifstream sizes("/proc/self/statm");
    rlim_t total = 0, resident = 0, shared = 0, text = 0, library = 0, data = 0;
    if (!(sizes >> total >> resident >> shared >> text >> library >> data))
        return;
    const rlim_t limit = data * static_cast<rlim_t>(::sysconf(_SC_PAGESIZE)) + mostMemory;
    const rlimit both{limit, limit};
    ::setrlimit(RLIMIT_DATA, &both);
}

} // namespace

void bindToParent() {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    const rlimit none{0, 0};
    ::setrlimit(RLIMIT_CORE, &none);
}

void confine(const std::string& writableDirectory) {
    denyWriting(writableDirectory);
    limitMemory();
}

} // namespace larkspin
