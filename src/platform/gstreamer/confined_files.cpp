// Landlock's part of the confinement: what this process reaches by a path, or by a port.
#include "platform/gstreamer/confinement.h"
#include "platform/posix/descriptor.h"

#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <utility>
#include <vector>

namespace larkspin {

namespace {

// Rights that newer versions of Landlock know, by their values, since the system's headers may be
// older; and the versions that brought each of them.
constexpr std::uint64_t accessTruncate = 1ull << 14, accessDevice = 1ull << 15;
constexpr std::pair<std::uint64_t, long> newerAccess[] = {
    {LANDLOCK_ACCESS_FS_REFER, 2}, {accessTruncate, 3}, {accessDevice, 5}};
constexpr std::uint64_t netBind = 1ull << 0, netConnect = 1ull << 1;
constexpr std::uint64_t scopeAbstractSockets = 1ull << 0, scopeSignals = 1ull << 1;
constexpr int networkSince = 4, scopeSince = 6;

struct Ruleset {
    std::uint64_t files = 0, network = 0, scoped = 0;
};

constexpr std::uint64_t readFile = LANDLOCK_ACCESS_FS_READ_FILE,
                        reading = readFile | LANDLOCK_ACCESS_FS_READ_DIR,
                        writeFile = LANDLOCK_ACCESS_FS_WRITE_FILE;

std::uint64_t allAccess(long version) {
    std::uint64_t access =
        LANDLOCK_ACCESS_FS_EXECUTE | reading | writeFile | LANDLOCK_ACCESS_FS_REMOVE_DIR |
        LANDLOCK_ACCESS_FS_REMOVE_FILE | LANDLOCK_ACCESS_FS_MAKE_CHAR |
        LANDLOCK_ACCESS_FS_MAKE_DIR | LANDLOCK_ACCESS_FS_MAKE_REG | LANDLOCK_ACCESS_FS_MAKE_SOCK |
        LANDLOCK_ACCESS_FS_MAKE_FIFO | LANDLOCK_ACCESS_FS_MAKE_BLOCK | LANDLOCK_ACCESS_FS_MAKE_SYM;
    // Landlock refuses a set of rules with rights that its version doesn't know.
    for (const auto& [newer, since] : newerAccess)
        if (version >= since)
            access |= newer;
    return access;
}

constexpr const char* systemPaths[] = {
    // libraries, and what finds them; to load one is to read it
    "/usr/lib", "/usr/lib64", "/usr/lib32", "/usr/local/lib", "/lib", "/lib64", "/lib32",
    "/etc/ld.so.cache",
    // instruments
    "/usr/share/sounds",
    // what a sound server's client and ALSA are set up by
    "/usr/share/alsa", "/usr/share/pipewire", "/etc/alsa", "/etc/asound.conf", "/etc/pulse",
    "/etc/pipewire", "/etc/machine-id", "/var/lib/dbus/machine-id", "/etc/nsswitch.conf",
    "/etc/passwd", "/etc/group", "/proc/asound",
    // this process, and what it runs on
    "/proc/self", "/proc/cpuinfo", "/proc/stat", "/proc/meminfo", "/sys/devices/system/cpu",
    "/dev/urandom", "/dev/random", "/dev/zero"};

constexpr const char* soundConfiguration[] = {"/pulse", "/alsa", "/pipewire"};
constexpr const char* soundFilesAtHome[] = {"/.asoundrc", "/.pulse", "/.pulse-cookie"};

std::string variable(const char* name) {
    const char* const value = std::getenv(name);
    return value && *value == '/' ? value : "";
}

std::vector<std::string> readablePaths() {
    std::vector<std::string> paths(std::begin(systemPaths), std::end(systemPaths));
    const std::string home = variable("HOME"), runtime = variable("XDG_RUNTIME_DIR");
    std::string configuration = variable("XDG_CONFIG_HOME");
    if (configuration.empty() && !home.empty())
        configuration = home + "/.config";
    if (!configuration.empty())
        for (const char* name : soundConfiguration)
            paths.push_back(configuration + name);
    if (!home.empty())
        for (const char* name : soundFilesAtHome)
            paths.push_back(home + name);
    if (!runtime.empty())
        paths.push_back(runtime + "/pulse");
    return paths;
}

class Landlock {
public:
    explicit Landlock(Ruleset rules)
        : rules_(rules),
          ruleset_(static_cast<int>(::syscall(SYS_landlock_create_ruleset, &rules_, size(), 0))) {}

    static long version() {
        return ::syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
    }

    // A rule for a plain file takes only the rights that there are for files.
    void allow(const std::string& path, std::uint64_t access) {
        const Descriptor parent(::open(path.c_str(), O_PATH | O_CLOEXEC));
        struct stat status {};
        if (!parent.isOpen() || ::fstat(parent.number(), &status) != 0)
            return;
        if (!S_ISDIR(status.st_mode))
            access &= readFile | writeFile | accessTruncate | accessDevice;
        const landlock_path_beneath_attr rule{access & rules_.files, parent.number()};
        ::syscall(SYS_landlock_add_rule, ruleset_.number(), LANDLOCK_RULE_PATH_BENEATH, &rule, 0);
    }

    bool enforce() {
        return ruleset_.isOpen() &&
               ::syscall(SYS_landlock_restrict_self, ruleset_.number(), 0) == 0;
    }

private:
    std::size_t size() const { // an older kernel knows the first fields only
        return rules_.scoped    ? sizeof rules_
               : rules_.network ? 2 * sizeof rules_.files
                                : sizeof rules_.files;
    }

    Ruleset rules_;
    Descriptor ruleset_;
};

} // namespace

bool closeFiles(const std::string& writableDirectory) {
    const long version = Landlock::version();
    if (version < 1)
        return false;
    Ruleset rules{.files = allAccess(version)};
    if (version >= scopeSince)
        rules.scoped = scopeAbstractSockets | scopeSignals;
    Landlock landlock(rules);
    for (const std::string& path : readablePaths())
        landlock.allow(path, reading);
    landlock.allow("/dev/null", readFile | writeFile);
    landlock.allow("/dev/snd", reading | writeFile | accessDevice);
    // Only tests give a directory: their sink writes a file.
    if (!writableDirectory.empty())
        landlock.allow(writableDirectory, rules.files & ~LANDLOCK_ACCESS_FS_EXECUTE);
    return landlock.enforce();
}

bool closeNetwork() {
    if (Landlock::version() < networkSince)
        return false;
    return Landlock({.network = netBind | netConnect}).enforce();
}

} // namespace larkspin
