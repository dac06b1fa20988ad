#include "platform/posix/posix_process.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <unistd.h>

namespace larkspin {

PosixProcess::~PosixProcess() {
    if (lock_ >= 0)
        ::close(lock_);
}

bool PosixProcess::claimOnlyCopy() {
    if (lock_ >= 0)
        return true;
    std::error_code failed;
    std::filesystem::create_directories(std::filesystem::path(lockFile_).parent_path(), failed);
    const int lock = ::open(lockFile_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (lock < 0)
        return true;
    if (::flock(lock, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        ::close(lock);
        return false;
    }
    lock_ = lock;
    return true;
}

void PosixProcess::end() {
    if (beforeEnd_)
        beforeEnd_();
    std::_Exit(EXIT_SUCCESS);
}

} // namespace larkspin
