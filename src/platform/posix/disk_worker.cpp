#include "platform/posix/disk_worker.h"

#include "platform/posix/no_signals.h"
#include "platform/posix/passed_file.h"

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace larkspin {

namespace {

constexpr std::size_t portion = std::size_t{64} * 1024; // of what is read at once

// So many questions without a rest are a scan's, which has the worker and the program at work side
// by side.
constexpr int scansQuestions = 8;

// Goes in front of each message. Its file comes with the first bytes.
struct Head {
    std::uint64_t length = 0, files = 0;
};

// The system wakes the worker up on the processor of whoever asks, and on some machines leaves both
// there, one waiting for the other, while the next processor has nothing to do.
void leaveProcessor() {
    cpu_set_t all;
    if (::sched_getaffinity(0, sizeof all, &all) != 0)
        return;
    cpu_set_t others = all;
    if (const int here = ::sched_getcpu(); here >= 0)
        CPU_CLR(static_cast<unsigned>(here), &others);
    if (CPU_COUNT(&others) > 0 && ::sched_setaffinity(0, sizeof others, &others) == 0)
        ::sched_setaffinity(0, sizeof all, &all); // it may go anywhere from there
}

// Reads all questions that are there at once, because a system call costs as much as listing a
// small directory.
class QuestionReader {
public:
    explicit QuestionReader(int channel) : channel_(channel) {}

    // False at the end of the channel. The question stands until the next one is read.
    bool read(std::string_view& question) {
        Head head;
        if (!fillUpTo(sizeof head))
            return false;
        std::memcpy(&head, bytes_.data() + taken_, sizeof head);
        taken_ += sizeof head;
        if (!fillUpTo(head.length))
            return false;
        if (++sinceRest_ == scansQuestions)
            leaveProcessor();
        question = std::string_view(bytes_).substr(taken_, head.length);
        taken_ += head.length;
        return true;
    }

private:
    bool fillUpTo(std::size_t size) {
        if (bytes_.size() - taken_ >= size)
            return true;
        bytes_.erase(0, std::exchange(taken_, 0));
        while (bytes_.size() < size) {
            char buffer[portion];
            ssize_t got = ::recv(channel_, buffer, sizeof buffer, MSG_DONTWAIT);
            if (got < 0 && errno == EAGAIN) {
                got = ::recv(channel_, buffer, sizeof buffer, 0);
                sinceRest_ = 0;
            }
            if (got < 0 && errno == EINTR)
                continue;
            if (got <= 0)
                return false;
            bytes_.append(buffer, static_cast<std::size_t>(got));
        }
        return true;
    }

    int channel_;
    std::string bytes_;
    std::size_t taken_ = 0;
    int sinceRest_ = 0; // questions
};

void waitUntilReady(int channel, short events, int milliseconds) {
    pollfd waiting{channel, events, 0};
    ::poll(&waiting, 1, milliseconds);
}

bool writeAll(int channel, std::string_view bytes, const Descriptor& file) {
    const Descriptor* along = file.isOpen() ? &file : nullptr;
    while (!bytes.empty()) {
        const ssize_t put = sendWithFile(channel, bytes, along);
        if (put < 0 && errno == EAGAIN)
            waitUntilReady(channel, POLLOUT, -1);
        if (put < 0 && (errno == EINTR || errno == EAGAIN))
            continue;
        if (put <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(put));
        // The file has gone with the first bytes.
        along = nullptr;
    }
    return true;
}

std::string framed(std::string_view message, bool hasFile = false) {
    const Head head{message.size(), hasFile};
    std::string frame;
    frame.reserve(sizeof head + message.size());
    return frame.append(reinterpret_cast<const char*>(&head), sizeof head).append(message);
}

// Nothing but the channel stays open in the worker. One that hangs must hold neither the lock that
// tells a second copy of the program, nor an end of any pipe. What it writes to its streams goes
// nowhere.
constexpr int onlyChannel = 0;

bool keepOnly(int channel) {
    return ::dup2(channel, onlyChannel) == onlyChannel &&
           ::close_range(onlyChannel + 1, ~0U, 0) == 0 &&
           ::open("/dev/null", O_WRONLY) == STDOUT_FILENO &&
           ::open("/dev/null", O_WRONLY) == STDERR_FILENO;
}

// The worker ends when the program's end closes the channel, or when it is killed. The signals that
// end the program stay blocked in it.
[[noreturn]] void serve(int channel, const DiskWorker::Answer& answer) {
    ::prctl(PR_SET_NAME, "larkspin-disk");
    ::prctl(PR_SET_PDEATHSIG, SIGKILL); // also while it hangs
    ::signal(SIGABRT, SIG_DFL); // its end is no crash of the program's, and isn't reported as one
    QuestionReader questions(onlyChannel);
    std::string_view question;
    bool goesOn = keepOnly(channel);
    while (goesOn && questions.read(question)) {
        const DiskAnswer given = answer(question);
        goesOn = writeAll(onlyChannel, framed(given.text, given.file.isOpen()), given.file);
    }
    ::_exit(0);
}

} // namespace

std::unique_ptr<DiskWorker> DiskWorker::start(const Answer& answer) {
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
        return nullptr;
    Descriptor own(ends[0]), other(ends[1]);
    pid_t process = -1;
    {
        // The worker begins, and stays, with the signals blocked.
        const NoSignals quiet;
        process = ::fork();
        if (process == 0)
            serve(other.number(), answer);
    }
    if (process < 0)
        return nullptr;
    return std::unique_ptr<DiskWorker>(new DiskWorker(process, std::move(own)));
}

DiskWorker::~DiskWorker() {
    kill();
    isGone();
}

void DiskWorker::kill() {
    if (!isGone_)
        ::kill(process_, SIGKILL);
}

bool DiskWorker::isGone() {
    pid_t reaped = 0;
    while (!isGone_ && (reaped = ::waitpid(process_, nullptr, WNOHANG)) < 0 && errno == EINTR)
        continue;
    isGone_ = isGone_ || reaped != 0;
    return isGone_;
}

void DiskWorker::add(std::string_view question) {
    outgoing_.erase(0, std::exchange(sent_, 0));
    outgoing_ += framed(question);
}

void DiskWorker::flush() {
    while (hasUnsent() && !isBroken_) {
        const ssize_t put = ::send(channel(), outgoing_.data() + sent_, outgoing_.size() - sent_,
                                   MSG_DONTWAIT | MSG_NOSIGNAL);
        if (put > 0)
            sent_ += static_cast<std::size_t>(put);
        else if (errno == EAGAIN)
            return;
        else if (errno != EINTR)
            isBroken_ = true;
    }
}

void DiskWorker::fill() {
    // Bytes of answers that were taken are erased here all together, not with each answer.
    incoming_.erase(0, std::exchange(taken_, 0));
    char buffer[portion];
    Descriptor file;
    ssize_t got = 0;
    do
        got = receiveWithFile(channel(), buffer, file);
    while (got < 0 && errno == EINTR);
    if (file.isOpen())
        files_.push_back(std::move(file));
    if (got > 0)
        incoming_.append(buffer, static_cast<std::size_t>(got));
    else if (got == 0 || errno != EAGAIN)
        isBroken_ = true;
}

void DiskWorker::waitForNews(std::chrono::milliseconds longest) const {
    const short wanted = hasUnsent() ? POLLIN | POLLOUT : POLLIN;
    waitUntilReady(channel(), wanted, static_cast<int>(longest.count()));
}

std::optional<DiskAnswer> DiskWorker::receive() {
    flush();
    // Looks at what is there already, and once more after a read.
    for (int round = 0; round < 2; ++round) {
        Head head;
        const std::size_t there = incoming_.size() - taken_;
        if (there >= sizeof head) {
            std::memcpy(&head, incoming_.data() + taken_, sizeof head);
            if (there - sizeof head >= head.length) {
                DiskAnswer answer(incoming_.substr(taken_ + sizeof head, head.length));
                taken_ += sizeof head + head.length;
                if (head.files > 0 && !files_.empty()) {
                    answer.file = std::move(files_.front());
                    files_.pop_front();
                }
                return answer;
            }
        }
        if (round == 0)
            fill();
    }
    return std::nullopt;
}

} // namespace larkspin
