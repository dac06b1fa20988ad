#include "platform/terminal/queued_output.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <poll.h>
#include <string>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>
#include <utility>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

constexpr std::size_t littleWaits = 65536; // bytes: as much as a pipe holds
constexpr auto patience = 250ms;           // with a reader that takes nothing
constexpr auto patienceAtEnd = 800ms;      // in which a reader frees a page of its pipe
constexpr std::size_t memoryKept = 65536;  // bytes, for the next texts

// Opens once more what the descriptor leads to, for a description that doesn't block and that no
// other process shares; -1 when that can't be had. A file isn't opened again: the place to write to
// belongs to its description, and writing to it doesn't block anyway. A terminal that is another
// user's, as after `su`, is opened by the name that each session has for its own.
int reopened(int descriptor) {
    struct stat status {};
    if (::fstat(descriptor, &status) != 0 || S_ISREG(status.st_mode))
        return -1;
    const std::string path = "/proc/self/fd/" + std::to_string(descriptor);
    constexpr int way = O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
    const int own = ::open(path.c_str(), way);
    const bool isOfSession = ::tcgetsid(descriptor) >= 0;
    return own < 0 && isOfSession ? ::open("/dev/tty", way) : own;
}

} // namespace

QueuedOutput::QueuedOutput(PollLoop& loop, int descriptor)
    : loop_(loop), descriptor_(reopened(descriptor)), isOwn_(descriptor_ >= 0), mustPoll_(!isOwn_) {
    if (!isOwn_)
        descriptor_ = descriptor;
}

QueuedOutput::~QueuedOutput() {
    loop_.unwatchWritable(descriptor_);
    if (isOwn_)
        ::close(descriptor_);
}

void QueuedOutput::putCounted(std::string_view text, int count, std::size_t most) {
    if (waiting() >= most)
        writeOn();
    if (isGone_ || text.empty())
        return;
    // Once something was dropped, what others say stays out until the reader has been told. The
    // owner's own lines come in as soon as there is room.
    if (waiting() >= most || (hasDropped_ && most < bound)) {
        hasDropped_ = true;
        dropped_ += count;
        return;
    }
    if (hasDropped_ && count > 0)
        tellDrops();
    if (!isWaiting())
        // Patience with the reader begins when something begins to wait.
        takenAt_ = loop_.now();
    queue_ += text;
    writeOn();
    if (isWaiting())
        loop_.watchWritable(descriptor_, [this] { readerIsReady(); });
}

void QueuedOutput::writeOn() {
    // Bytes that are taken leave the queue when they fill half of it, since each removal moves the
    // rest.
    while (isWaiting() && writeSome())
        continue;
    if (!isWaiting()) {
        queue_.clear();
        if (queue_.capacity() > memoryKept)
            queue_ = {};
        taken_ = 0;
    } else if (taken_ > queue_.size() / 2) {
        queue_.erase(0, std::exchange(taken_, 0));
    }
}

// False when the reader takes no more for now, or never will.
bool QueuedOutput::writeSome() {
    std::size_t size = waiting();
    // This descriptor may block. A pipe that poll(2) calls ready takes PIPE_BUF bytes at once.
    if (mustPoll_) {
        if (!waitForReader(descriptor_, 0ms))
            return false;
        size = std::min<std::size_t>(size, PIPE_BUF);
    }
    const ssize_t written = ::write(descriptor_, queue_.data() + taken_, size);
    if (written > 0) {
        taken_ += static_cast<std::size_t>(written);
        takenAt_ = loop_.now();
        return true;
    }
    if (written < 0 && errno == EINTR)
        return true;
    if (written == 0 || errno == EAGAIN)
        return false;
    isGone_ = true;
    taken_ = queue_.size();
    whenGone_();
    return false;
}

void QueuedOutput::readerIsReady() {
    writeOn();
    if (isWaiting())
        return;
    loop_.unwatchWritable(descriptor_);
    if (hasDropped_)
        tellDrops();
    whenTaken_();
}

void QueuedOutput::tellDrops() {
    hasDropped_ = false;
    const int count = std::exchange(dropped_, 0);
    if (!isGone_)
        afterDrops_(count);
}

Nanoseconds QueuedOutput::busyUntil() const {
    if (isGone_ || waiting() < littleWaits)
        return Nanoseconds::min();
    return takenAt_ + patience;
}

bool QueuedOutput::waitForReader(int descriptor, std::chrono::milliseconds longest) {
    pollfd writable{descriptor, POLLOUT, 0};
    return ::poll(&writable, 1, static_cast<int>(longest.count())) > 0;
}

void QueuedOutput::finish(const Wait& takesBytes) {
    writeOn();
    while (isWaiting() && takesBytes(descriptor_, patienceAtEnd)) {
        const std::size_t before = waiting();
        writeOn();
        if (waiting() == before)
            return; // poll(2) tells an error as readiness
    }
}

} // namespace larkspin
