#include "platform/posix/posix_process.h"

#include "platform/posix/drive_paths.h"
#include "platform/posix/private_directory.h"
#include "platform/posix/replace_file.h"
#include "shell/data_directory.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace larkspin {

namespace {

enum class Claim { ours, taken, impossible };

// A record lock, since those work on network file systems as well. It belongs to the open file
// rather than to the process, so that closing another descriptor of the file can't lose it.
Claim lock(const Descriptor& file) {
    struct flock whole {};
    whole.l_type = F_WRLCK;
    whole.l_whence = SEEK_SET;
    if (!file.isOpen())
        return Claim::impossible;
    if (::fcntl(file.number(), F_OFD_SETLK, &whole) == 0)
        return Claim::ours;
    return errno == EAGAIN || errno == EACCES ? Claim::taken : Claim::impossible;
}

} // namespace

bool PosixProcess::claimOnlyCopy() {
    if (lock_.isOpen())
        return true;
    const std::string directory = nativePath(dataDirectory_);
    makePrivateDirectory(directory);
    // If something other than a file has that name, it is neither followed nor waited for.
    Descriptor file(::open((directory + '/' + std::string(ownName::lock)).c_str(),
                           O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600));
    const Claim claim = lock(file);
    if (claim == Claim::taken)
        return false;
    closeToOthers(directory);
    if (claim == Claim::ours) {
        lock_ = std::move(file);
        // Only now is it certain that no other copy is writing there.
        removeUnfinished(directory);
    }
    return true;
}

void PosixProcess::end() {
    if (beforeEnd_)
        beforeEnd_();
    // Destructors must not run: handlers that still wait further up the stack use what they would
    // destroy.
    std::_Exit(EXIT_SUCCESS);
}

} // namespace larkspin
