// While it stands no signal comes in: a process that is forked off now would take it with handlers
// that aren't meant for it.
#pragma once

#include <csignal>

namespace larkspin {

class NoSignals {
public:
    NoSignals() {
        sigset_t all;
        sigfillset(&all);
        ::pthread_sigmask(SIG_SETMASK, &all, &before_);
    }
    ~NoSignals() { ::pthread_sigmask(SIG_SETMASK, &before_, nullptr); }
    NoSignals(const NoSignals&) = delete;
    NoSignals& operator=(const NoSignals&) = delete;

private:
    sigset_t before_{};
};

} // namespace larkspin
