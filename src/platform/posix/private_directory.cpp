#include "platform/posix/private_directory.h"

#include <cerrno>
#include <filesystem>
#include <sys/stat.h>

namespace larkspin {

bool makePrivateDirectory(const std::string& path) {
    std::filesystem::path made;
    for (const auto& name : std::filesystem::path(path)) {
        made /= name;
        // Fails for the directories that are there; only the last look counts.
        ::mkdir(made.c_str(), S_IRWXU);
    }
    const int reason = errno;
    struct stat facts {};
    const bool isThere = ::stat(path.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode);
    errno = reason; // of mkdir, which tells more than that of stat
    return isThere;
}

void closeToOthers(const std::string& path) {
    constexpr mode_t others = S_IRWXG | S_IRWXO;
    struct stat facts {};
    if (::stat(path.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode) && (facts.st_mode & others))
        ::chmod(path.c_str(), facts.st_mode & 07777 & ~others);
}

} // namespace larkspin
