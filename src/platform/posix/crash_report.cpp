#include "platform/posix/crash_report.h"

#include "shell/trace.h"
#include "shell/version.h"

#include <array>
#include <csignal>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace larkspin {

namespace {

struct Crash {
    int signal;
    const char* text;
    struct sigaction before;
};

// A handler of signals has nothing but what it can reach from here, and may call next to nothing:
// it allocates nothing and takes no lock.
Crash crashes[] = {{SIGSEGV, "a memory fault", {}},
                   {SIGBUS, "a bus error", {}},
                   {SIGFPE, "an arithmetic error", {}},
                   {SIGILL, "a bad instruction", {}},
                   {SIGABRT, "an assert or an abort", {}}};
const Trace* reported = nullptr;
void (*beforeReport)() = nullptr;
std::string reportFile, reportTitle;
std::array<char, 65536> reportStack; // that of the program may be what is exhausted

void write(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t count = ::write(descriptor, text.data(), text.size());
        if (count <= 0)
            return;
        text.remove_prefix(static_cast<std::size_t>(count));
    }
}

void writeReport(int descriptor, const char* crash) {
    for (const std::string_view part : {std::string_view(reportTitle), std::string_view(crash)})
        write(descriptor, part);
    write(descriptor, "\n");
    Trace::Buffer buffer;
    for (std::size_t number = 0; number < reported->size(); ++number) {
        write(descriptor, reported->line(number, buffer));
        write(descriptor, "\n");
    }
}

void report(const char* crash) {
    if (beforeReport)
        beforeReport();
    ::unlink(reportFile.c_str()); // whatever it is: nothing is written where a link leads to
    const int file = ::open(reportFile.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    writeReport(file < 0 ? STDERR_FILENO : file, crash);
    if (file < 0)
        return;
    ::close(file);
    write(STDERR_FILENO, "larkspin has crashed, what it did last is in ");
    write(STDERR_FILENO, reportFile);
    write(STDERR_FILENO, "\n");
}

// A fault comes again as soon as this returns, and then to whoever caught it before. What somebody
// has sent doesn't.
void takeCrash(int signal, siginfo_t* info, void*) {
    for (Crash& crash : crashes)
        ::sigaction(crash.signal, &crash.before, nullptr);
    for (const Crash& crash : crashes)
        if (crash.signal == signal)
            report(crash.text);
    if (info->si_code <= 0)
        ::raise(signal);
}

} // namespace

void beforeCrashReport(void (*task)()) {
    beforeReport = task;
}

void reportCrashes(const Trace& trace, const std::string& file) {
    reported = &trace;
    reportFile = file;
    reportTitle = "larkspin " + versionText() + " crashed by ";
    stack_t stack{};
    ::sigaltstack(nullptr, &stack);
    if ((stack.ss_flags & SS_DISABLE) != 0) { // else somebody has taken care of it
        stack = {reportStack.data(), 0, reportStack.size()};
        ::sigaltstack(&stack, nullptr);
    }
    struct sigaction action {};
    action.sa_sigaction = takeCrash;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    for (Crash& crash : crashes)
        ::sigaction(crash.signal, &action, &crash.before);
}

} // namespace larkspin
