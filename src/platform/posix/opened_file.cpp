#include "platform/posix/opened_file.h"

#include "platform/posix/failure_words.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

namespace larkspin {

// Opening a pipe or a device could wait, or have effects. So the path is looked at first, without
// opening what it leads to, and only a plain file is then opened, by that look.
OpenedFile openToRead(const std::string& path) {
    constexpr int toRead = O_RDONLY | O_NOCTTY | O_CLOEXEC;
    const Descriptor look(::open(path.c_str(), O_PATH | O_CLOEXEC));
    struct stat status {};
    if (!look.isOpen() || ::fstat(look.number(), &status) != 0)
        return {{}, failureWords(errno)};
    if (!S_ISREG(status.st_mode))
        return {{}, S_ISDIR(status.st_mode) ? failureWords(EISDIR) : "it is no file"};
    const std::string same = "/proc/self/fd/" + std::to_string(look.number());
    Descriptor file(::open(same.c_str(), toRead | O_NONBLOCK));
    // Somebody holds a lease on the file. An open that waits makes him let go.
    if (!file.isOpen() && errno == EWOULDBLOCK)
        file = Descriptor(::open(same.c_str(), toRead));
    if (!file.isOpen())
        return {{}, failureWords(errno)};
    return {std::move(file)};
}

} // namespace larkspin
