#include "platform/posix/rename_file.h"

#include "platform/posix/descriptor.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace larkspin {

namespace {

// Whether the two are one name, written in two ways. For two hard links to one file it is false:
// the system would leave both names and report success.
bool isOneName(const std::string& a, const std::string& b) {
    struct stat first {};
    struct stat second {};
    return ::lstat(a.c_str(), &first) == 0 && ::lstat(b.c_str(), &second) == 0 &&
           first.st_dev == second.st_dev && first.st_ino == second.st_ino && first.st_nlink == 1;
}

bool takeOwnName(const std::string& from, const std::string& to) {
    if (isOneName(from, to))
        return ::rename(from.c_str(), to.c_str()) == 0;
    errno = EEXIST;
    return false;
}

} // namespace

bool renameFile(const std::string& from, const std::string& to) {
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return true;
    if (errno == EEXIST)
        return takeOwnName(from, to);
    // Some file systems can't rename without replacing.
    const bool isUnknown = errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP;
    return isUnknown && claimAndRename(from, to);
}

bool claimAndRename(const std::string& from, const std::string& to) {
    const Descriptor claim(::open(to.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR));
    if (!claim.isOpen())
        return errno == EEXIST && takeOwnName(from, to);
    if (::rename(from.c_str(), to.c_str()) == 0)
        return true;
    // Removing the claim must not change the reason that is told.
    const int reason = errno;
    ::unlink(to.c_str());
    errno = reason;
    return false;
}

} // namespace larkspin
