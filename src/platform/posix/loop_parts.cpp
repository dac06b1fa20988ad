#include "platform/posix/loop_parts.h"

#include <csignal>
#include <sys/signalfd.h>
#include <unistd.h>

namespace larkspin {

namespace {

sigset_t setOf(std::initializer_list<int> signals) {
    sigset_t set;
    sigemptyset(&set);
    for (const int number : signals)
        sigaddset(&set, number);
    return set;
}

} // namespace

Nanoseconds steadyTime() {
    return std::chrono::steady_clock::now().time_since_epoch();
}

void blockSignals(std::initializer_list<int> signals) {
    const sigset_t set = setOf(signals);
    ::pthread_sigmask(SIG_BLOCK, &set, nullptr);
}

int openSignals(std::initializer_list<int> signals) {
    blockSignals(signals);
    const sigset_t set = setOf(signals);
    return ::signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK);
}

bool takeSignal(int descriptor) {
    signalfd_siginfo received{};
    return ::read(descriptor, &received, sizeof received) == sizeof received;
}

} // namespace larkspin
