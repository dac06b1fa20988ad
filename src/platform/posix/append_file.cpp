#include "platform/posix/append_file.h"

#include "platform/posix/descriptor.h"
#include "platform/posix/failure_words.h"
#include "platform/posix/private_directory.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace larkspin {

namespace {

constexpr const char* isNone = "something else has that name";
constexpr mode_t ownersOwn = S_IRUSR | S_IWUSR, ofOthers = S_IRWXG | S_IRWXO;

bool writeWhole(const Descriptor& file, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::write(file.number(), text.data(), text.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        text.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

// Closes it to others, who may have been let in by whatever has made or copied it.
FileChange mayGrow(const Descriptor& file, const struct stat& facts) {
    if (!S_ISREG(facts.st_mode))
        return {isNone};
    if (facts.st_uid != ::geteuid())
        return {"the file is somebody else's"};
    const bool isOpenToOthers = facts.st_mode & ofOthers;
    return isOpenToOthers && ::fchmod(file.number(), ownersOwn) != 0 ? failedBecause(errno)
                                                                     : FileChange{};
}

} // namespace

FileChange appendToFile(const std::string& path, std::string_view text) {
    // Whether that was needed, or can't be done, shows as the file is opened.
    makePrivateDirectory(path.substr(0, path.rfind('/')));
    // Without O_NONBLOCK, opening a pipe of that name would wait for a reader.
    const Descriptor file(::open(path.c_str(),
                                 O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_NOCTTY | O_CLOEXEC,
                                 ownersOwn));
    if (!file.isOpen()) // a pipe without a reader has no such address
        return errno == ENXIO ? FileChange{isNone} : failedBecause(errno);
    struct stat facts {};
    if (::fstat(file.number(), &facts) != 0)
        return failedBecause(errno);
    if (FileChange outcome = mayGrow(file, facts); !outcome)
        return outcome;
    if (writeWhole(file, text))
        return {};
    const int reason = errno;
    // Half of a text would be there twice after the next try.
    return ::ftruncate(file.number(), facts.st_size) == 0 ? failedBecause(reason)
                                                          : failedBecause(errno);
}

} // namespace larkspin
