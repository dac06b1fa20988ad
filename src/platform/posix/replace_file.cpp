#include "platform/posix/replace_file.h"

#include "platform/posix/descriptor.h"
#include "platform/posix/failure_words.h"
#include "shell/data_directory.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <optional>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace larkspin {

namespace {

namespace fs = std::filesystem;

constexpr mode_t ownersAlone = S_IRUSR | S_IWUSR;
constexpr std::string_view unfinishedEnd = ".new";

// A name is unique among running processes, since it holds the number of the process and a count. A
// file that an earlier process with that number has left may have it all the same; `withNewName`
// goes past that.
fs::path nextUnfinishedName(const fs::path& directory) {
    static unsigned long writes = 0;
    return directory / (std::string(ownName::unfinishedStart) + std::to_string(::getpid()) + '-' +
                        std::to_string(++writes) + std::string(unfinishedEnd));
}

// The first new name that `take` could make use of; it fails with EEXIST on a name that is there.
std::optional<fs::path> withNewName(const fs::path& directory,
                                    const std::function<bool(const fs::path&)>& take) {
    constexpr int mostTries = 1000;
    for (int tries = 0; tries < mostTries; ++tries) {
        fs::path name = nextUnfinishedName(directory);
        if (take(name))
            return name;
        if (errno != EEXIST)
            break;
    }
    return std::nullopt;
}

bool write(const Descriptor& file, const std::string& contents) {
    std::size_t put = 0;
    while (put < contents.size()) {
        const ssize_t count = ::write(file.number(), contents.data() + put, contents.size() - put);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        put += static_cast<std::size_t>(count);
    }
    return ::fsync(file.number()) == 0;
}

// The file gets its name only when it is complete, so a kill leaves no half of it. Not every file
// system can do that.
std::optional<fs::path> writeThenName(const fs::path& directory, const std::string& contents) {
    const Descriptor file(::open(directory.c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, ownersAlone));
    if (!file.isOpen() || !write(file, contents))
        return std::nullopt;
    const std::string unnamed = "/proc/self/fd/" + std::to_string(file.number());
    return withNewName(directory, [&unnamed](const fs::path& name) {
        return ::linkat(AT_FDCWD, unnamed.c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0;
    });
}

std::optional<fs::path> nameThenWrite(const fs::path& directory, const std::string& contents) {
    Descriptor file;
    auto name = withNewName(directory, [&file](const fs::path& fresh) {
        file =
            Descriptor(::open(fresh.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, ownersAlone));
        return file.isOpen();
    });
    if (!name || write(file, contents))
        return name;
    // Removing the file must not change the reason that is told.
    const int reason = errno;
    ::unlink(name->c_str());
    errno = reason;
    return std::nullopt;
}

// Where the path leads in the end, through all links; there need be nothing yet.
fs::path behindLinks(fs::path path) {
    constexpr int mostLinks = 40; // as many as the system follows
    std::error_code failed;
    for (int links = 0; links < mostLinks; ++links) {
        const auto target = fs::read_symlink(path, failed);
        if (failed)
            break;
        path = path.parent_path() / target;
    }
    return path;
}

// Whether there is nothing yet, or a file that could be read.
FileChange mayBeReplaced(const fs::path& path) {
    struct stat facts {};
    if (::stat(path.c_str(), &facts) != 0)
        return errno == ENOENT ? FileChange{} : failedBecause(errno);
    if (!S_ISREG(facts.st_mode))
        return {"something else has that name"};
    if (static_cast<std::uintmax_t>(facts.st_size) > Files::largestFile)
        return {"the old file is too large to be ours"};
    // A file that can't be read wasn't read, so nobody knows what would be lost.
    return ::access(path.c_str(), R_OK) == 0 ? FileChange{} : failedBecause(errno);
}

} // namespace

FileChange replaceFile(const std::string& path, const std::string& contents) {
    const fs::path old = behindLinks(path);
    if (FileChange outcome = mayBeReplaced(old); !outcome)
        return outcome;
    if (old.empty())
        return failedBecause(ENOENT);
    const fs::path directory = old.parent_path();
    auto fresh = writeThenName(directory, contents);
    if (!fresh)
        fresh = nameThenWrite(directory, contents);
    if (!fresh)
        return failedBecause(errno);
    // The contents are safely on the disk by now. The rename puts them in place in one step.
    if (::rename(fresh->c_str(), old.c_str()) == 0)
        return {};
    const int reason = errno;
    ::unlink(fresh->c_str());
    return failedBecause(reason);
}

bool leadsNowhere(const std::string& path) {
    std::error_code failed;
    return fs::is_symlink(path, failed) && !fs::exists(behindLinks(path).parent_path(), failed);
}

void removeUnfinished(const std::string& directory) {
    std::error_code failed;
    for (fs::directory_iterator entry(directory, failed), end; entry != end;
         entry.increment(failed)) {
        const std::string name = entry->path().filename();
        if (name.starts_with(ownName::unfinishedStart) && name.ends_with(unfinishedEnd))
            ::unlink(entry->path().c_str());
    }
}

} // namespace larkspin
