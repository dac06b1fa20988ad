#include "platform/posix/disk_space.h"

#include <sys/stat.h>
#include <sys/vfs.h>

namespace larkspin {

std::optional<DriveSpace> spaceOf(const std::string& directory) {
    struct stat kind {};
    struct statfs facts {};
    if (directory.find('\0') != std::string::npos || ::stat(directory.c_str(), &kind) != 0 ||
        !S_ISDIR(kind.st_mode) || ::statfs(directory.c_str(), &facts) != 0)
        return std::nullopt;
    // Counted in fragments, where a file system has them. f_bfree includes what only root may use,
    // so that the total less this is what is really in use.
    const auto block = static_cast<std::uint64_t>(facts.f_frsize ? facts.f_frsize : facts.f_bsize);
    return DriveSpace{facts.f_blocks * block, facts.f_bfree * block};
}

} // namespace larkspin
