#include "platform/posix/disk_space.h"

#include "platform/posix/descriptor.h"
#include "platform/posix/no_signals.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <sys/vfs.h>
#include <sys/wait.h>
#include <unistd.h>

namespace larkspin {

namespace {

using Clock = std::chrono::steady_clock;

constexpr auto timeToDie = std::chrono::milliseconds(50); // for one that was killed
constexpr std::size_t mostHung = 4;                       // then nobody is asked

// The answer's way. In the process that asks nothing else stays open: one that hangs must hold
// neither the lock of the only copy nor an end of any pipe.
constexpr int answerChannel = 0;

[[noreturn]] void answer(int channel, const char* directory, DiskSpace::Ask ask) {
    DriveSpace space;
    if (::dup2(channel, answerChannel) == answerChannel &&
        ::close_range(answerChannel + 1, ~0U, 0) == 0 && ask(directory, space))
        while (::write(answerChannel, &space, sizeof space) < 0 && errno == EINTR)
            continue;
    ::_exit(0);
}

// Whether there is something to read, or the other end is gone.
bool isReadable(const Descriptor& channel, Clock::time_point latest) {
    for (;;) {
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(latest - Clock::now()).count();
        pollfd readable{channel.number(), POLLIN, 0};
        const int ready = ::poll(&readable, 1, static_cast<int>(std::max<decltype(left)>(left, 0)));
        if (ready > 0)
            return true;
        if (ready == 0 || errno != EINTR)
            return false;
    }
}

bool isReaped(pid_t process, int options) {
    pid_t reaped = 0;
    do
        reaped = ::waitpid(process, nullptr, options);
    while (reaped < 0 && errno == EINTR);
    return reaped != 0;
}

} // namespace

// statvfs may ask for memory, statfs doesn't.
bool DiskSpace::askSystem(const char* directory, DriveSpace& space) {
    struct stat kind {};
    struct statfs facts {};
    if (::stat(directory, &kind) != 0 || !S_ISDIR(kind.st_mode) || ::statfs(directory, &facts) != 0)
        return false;
    const auto block = static_cast<std::uint64_t>(facts.f_frsize ? facts.f_frsize : facts.f_bsize);
    space = {facts.f_blocks * block, facts.f_bfree * block};
    return true;
}

std::optional<DriveSpace> DiskSpace::of(const std::string& nativeDirectory) {
    reap();
    int ends[2];
    if (nativeDirectory.find('\0') != std::string::npos || hung_.size() >= mostHung ||
        ::pipe2(ends, O_CLOEXEC) != 0)
        return std::nullopt;
    const Descriptor readEnd(ends[0]);
    Descriptor writeEnd(ends[1]);
    pid_t asking = -1;
    {
        const NoSignals quiet;
        asking = ::fork();
        if (asking == 0)
            answer(writeEnd.number(), nativeDirectory.c_str(), ask_);
    }
    writeEnd = Descriptor();
    if (asking < 0)
        return std::nullopt;

    DriveSpace space;
    const bool told = isReadable(readEnd, Clock::now() + bound_) &&
                      ::read(readEnd.number(), &space, sizeof space) == sizeof space;
    ::kill(asking, SIGKILL);
    // It closes its end as it dies, and then nothing can keep it any more.
    char none = 0;
    const bool dying =
        isReadable(readEnd, Clock::now() + timeToDie) && ::read(readEnd.number(), &none, 1) == 0;
    if (!isReaped(asking, dying ? 0 : WNOHANG))
        hung_.push_back(asking);
    return told ? std::optional(space) : std::nullopt;
}

void DiskSpace::reap() {
    std::erase_if(hung_, [](pid_t process) { return isReaped(process, WNOHANG); });
}

} // namespace larkspin
