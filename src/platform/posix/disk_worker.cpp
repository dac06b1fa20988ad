#include "platform/posix/disk_worker.h"

#include "platform/posix/no_signals.h"

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace larkspin {

namespace {

constexpr std::size_t portion = 64 * 1024; // of what is read at once

// Each message goes behind its length.
using Length = std::uint64_t;

bool readAll(int channel, void* into, std::size_t size) {
    auto* at = static_cast<char*>(into);
    while (size > 0) {
        const ssize_t got = ::read(channel, at, size);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return false;
        at += got;
        size -= static_cast<std::size_t>(got);
    }
    return true;
}

bool writeAll(int channel, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t put = ::send(channel, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (put < 0 && errno == EINTR)
            continue;
        if (put <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(put));
    }
    return true;
}

std::string framed(std::string_view message) {
    const Length length = message.size();
    std::string frame(reinterpret_cast<const char*>(&length), sizeof length);
    return frame.append(message);
}

// In that process nothing else stays open: one that hangs must hold neither the lock of the only
// copy nor an end of any pipe. What would be written to the streams goes nowhere.
constexpr int onlyChannel = 0;

bool keepOnly(int channel) {
    return ::dup2(channel, onlyChannel) == onlyChannel &&
           ::close_range(onlyChannel + 1, ~0U, 0) == 0 &&
           ::open("/dev/null", O_WRONLY) == STDOUT_FILENO &&
           ::open("/dev/null", O_WRONLY) == STDERR_FILENO;
}

// It ends with the program, or by being killed: the signals that end the program are no business of
// its own.
[[noreturn]] void serve(int channel, const DiskWorker::Answer& answer) {
    ::prctl(PR_SET_NAME, "larkspin-disk");
    ::prctl(PR_SET_PDEATHSIG, SIGKILL); // also while it hangs
    Length length = 0;
    std::string question;
    bool goesOn = keepOnly(channel);
    while (goesOn && readAll(onlyChannel, &length, sizeof length)) {
        question.resize(length);
        goesOn = readAll(onlyChannel, question.data(), length) &&
                 writeAll(onlyChannel, framed(answer(question)));
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

void DiskWorker::send(std::string_view question) {
    outgoing_.erase(0, std::exchange(sent_, 0));
    outgoing_ += framed(question);
    flush();
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
    incoming_.erase(0, std::exchange(taken_, 0));
    char buffer[portion];
    ssize_t got = 0;
    do
        got = ::recv(channel(), buffer, sizeof buffer, MSG_DONTWAIT);
    while (got < 0 && errno == EINTR);
    if (got > 0)
        incoming_.append(buffer, static_cast<std::size_t>(got));
    else if (got == 0 || errno != EAGAIN)
        isBroken_ = true;
}

std::optional<std::string> DiskWorker::receive() {
    flush();
    for (int round = 0; round < 2; ++round) {
        Length length = 0;
        const std::size_t there = incoming_.size() - taken_;
        if (there >= sizeof length) {
            std::memcpy(&length, incoming_.data() + taken_, sizeof length);
            if (there - sizeof length >= length) {
                std::string answer = incoming_.substr(taken_ + sizeof length, length);
                taken_ += sizeof length + length;
                return answer;
            }
        }
        if (round == 0)
            fill();
    }
    return std::nullopt;
}

} // namespace larkspin
