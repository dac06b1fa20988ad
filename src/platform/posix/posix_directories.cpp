#include "platform/posix/posix_directories.h"

#include "platform/posix/descriptor.h"
#include "platform/posix/drive_paths.h"
#include "text/stand_ins.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace larkspin {

namespace {

// In bytes, of one system call. A scan lists thousands of directories, and in most of them
// everything comes with one call.
constexpr std::size_t bufferSize = std::size_t{32} * 1024;
constexpr std::size_t usualFiles = 24; // in a directory

enum class Kind { file, directory, link, other };

// A link to a file counts as a file; a link to a directory as one by itself. Some file systems
// don't say what an entry is, and are asked again.
Kind kindOf(int directory, const dirent64& entry) {
    if (entry.d_type == DT_REG)
        return Kind::file;
    if (entry.d_type == DT_DIR)
        return Kind::directory;
    if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN)
        return Kind::other;
    struct stat facts {};
    if (::fstatat(directory, entry.d_name, &facts, AT_SYMLINK_NOFOLLOW) != 0)
        return Kind::other;
    const bool isLink = S_ISLNK(facts.st_mode);
    if (isLink && ::fstatat(directory, entry.d_name, &facts, 0) != 0)
        return Kind::other;
    if (S_ISREG(facts.st_mode))
        return Kind::file;
    if (!S_ISDIR(facts.st_mode))
        return Kind::other;
    return isLink ? Kind::link : Kind::directory;
}

bool isMadeUp(std::string_view native, std::string_view name) {
    return native == "/" && (name == "proc" || name == "sys" || name == "dev" || name == "run");
}

// After a link to a directory, `..` leads the system to the directory above the link's target, not
// to the one that the path names. It is followed here, so that what is listed there gets the names
// by which it can be opened.
std::string withoutUpwards(const std::string& native) {
    namespace fs = std::filesystem;
    if (native.find("/..") == std::string::npos || native.size() >= PATH_MAX)
        return native; // a longer path can't exist, and would take hours to follow
    fs::path path;
    for (const fs::path& name : fs::path(native)) {
        std::error_code failed;
        if (name != "..")
            path /= name;
        else if (const fs::path real = fs::canonical(path, failed); !failed)
            path = real.parent_path();
        else
            path = path.parent_path(); // nothing there to be followed
    }
    return path;
}

void take(DirectoryListing& listing, std::string_view native, std::string_view name, Kind kind) {
    if (kind == Kind::other || name == "." || name == ".." || isMadeUp(native, name))
        return;
    auto& names = kind == Kind::file   ? listing.files
                  : kind == Kind::link ? listing.links
                                       : listing.directories;
    names.push_back(nameFromDisk(name));
}

DirectoryRead::Outcome outcomeOf(int error) {
    switch (error) {
    case ENOENT:
    case ENOTDIR:
    case ENAMETOOLONG:
        return DirectoryRead::Outcome::missing;
    case EACCES:
    case EPERM:
        return DirectoryRead::Outcome::refused;
    default:
        return DirectoryRead::Outcome::failed;
    }
}

DirectoryRead::Outcome whyUnopened(const std::string& native) {
    const int error = errno;
    struct stat facts {};
    if (error == ENOTDIR && ::stat(native.c_str(), &facts) == 0)
        return DirectoryRead::Outcome::noDirectory;
    return outcomeOf(error);
}

bool isHome(std::string_view typed) {
    return typed == "~" || typed.starts_with("~/");
}

std::string ownHome() {
    if (const char* home = std::getenv("HOME"); home && *home == '/')
        return home;
    const passwd* user = ::getpwuid(::geteuid());
    return user && user->pw_dir ? user->pw_dir : "/";
}

} // namespace

PosixDirectories::PosixDirectories() : home_(ownHome()) {}

DirectoryRead PosixDirectories::list(const std::string& path) {
    const std::string native = nativePath(path);
    if (native.empty())
        return DirectoryRead(DirectoryRead::Outcome::missing);
    const Descriptor directory(::open(native.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!directory.isOpen())
        return DirectoryRead(whyUnopened(native));
    DirectoryListing listing;
    listing.files.reserve(usualFiles);
    listing.path = larkspin::drivePath(withoutUpwards(native));
    alignas(dirent64) char buffer[bufferSize];
    for (;;) {
        const ssize_t filled = ::getdents64(directory.number(), buffer, sizeof buffer);
        if (filled < 0) // what has been read so far isn't all that there is
            return DirectoryRead(outcomeOf(errno));
        if (filled == 0)
            return DirectoryRead(std::move(listing));
        for (const char* at = buffer; at < buffer + filled;) {
            const auto& entry = *reinterpret_cast<const dirent64*>(at);
            take(listing, native, entry.d_name, kindOf(directory.number(), entry));
            at += entry.d_reclen;
        }
    }
}

std::vector<std::string> PosixDirectories::drives() {
    return {"c:"};
}

std::string PosixDirectories::nativeAsTyped(std::string_view typed) const {
    if (isHome(typed))
        return home_ + std::string(typed.substr(1));
    return typed.starts_with('/') ? std::string(typed) : nativePath(typed);
}

std::string PosixDirectories::drivePath(std::string_view typed) {
    // Native paths are mapped. A drive path stays as typed but for the stand-ins in its names, and
    // any other text stays as it is, for its reader to judge.
    if (isHome(typed) || typed.starts_with('/'))
        return larkspin::drivePath(withoutUpwards(nativeAsTyped(typed)));
    return typed.size() >= 2 && typed[1] == ':' ? asStoredPath(typed) : std::string(typed);
}

} // namespace larkspin
