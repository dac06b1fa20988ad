#include "platform/terminal/screen/owned_terminal.h"

#include "platform/posix/crash_report.h"
#include "platform/terminal/foreground.h"

#include <algorithm>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

namespace larkspin {

namespace {

constexpr int terminal = STDIN_FILENO;
constexpr unsigned short widest = 1000, highest = 500; // in characters
constexpr int patienceInCrash = 200;                   // milliseconds

} // namespace

OwnedTerminal::OwnedTerminal() = default;
OwnedTerminal::~OwnedTerminal() = default;

bool OwnedTerminal::isOurs() const {
    return isInForeground(terminal);
}

TerminalSize OwnedTerminal::size() const {
    winsize size{};
    ::ioctl(terminal, TIOCGWINSZ, &size);
    return {size.ws_row < 1 ? 24 : std::min(size.ws_row, highest),
            size.ws_col < 1 ? 80 : std::min(size.ws_col, widest)};
}

// What it is found in when it is taken once more, as after a stop, isn't what it was at first.
void OwnedTerminal::take(const std::string& bytesInCrash) {
    termios mode{};
    if (::tcgetattr(terminal, &mode) != 0)
        return;
    if (!found_)
        found_ = std::make_unique<termios>(mode);
    mode.c_iflag &= ~static_cast<tcflag_t>(BRKINT | ICRNL | IGNCR | INLCR | ISTRIP | IXON);
    mode.c_lflag &= ~static_cast<tcflag_t>(ECHO | ICANON | IEXTEN | ISIG);
    mode.c_cc[VMIN] = 1;
    mode.c_cc[VTIME] = 0;
    ::tcsetattr(terminal, TCSANOW, &mode);
    silenceErrors();
    bytesInCrash_ = bytesInCrash;
    // A handler of signals has nothing but what it can reach from there.
    static const OwnedTerminal* taken;
    taken = this;
    beforeCrashReport([] { taken->restoreInCrash(); });
}

void OwnedTerminal::silenceErrors() {
    if (errors_.isOpen() || ::isatty(STDERR_FILENO) != 1)
        return;
    const Descriptor nowhere(::open("/dev/null", O_WRONLY | O_CLOEXEC));
    errors_ = Descriptor(::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 3));
    if (nowhere.isOpen() && errors_.isOpen())
        ::dup2(nowhere.number(), STDERR_FILENO);
}

void OwnedTerminal::restore() const {
    if (found_ && isOurs())
        ::tcsetattr(terminal, TCSANOW, found_.get());
    if (errors_.isOpen())
        ::dup2(errors_.number(), STDERR_FILENO);
}

// Does no more than a handler of signals may.
void OwnedTerminal::restoreInCrash() const {
    pollfd writable{STDOUT_FILENO, POLLOUT, 0};
    if (isOurs() && ::poll(&writable, 1, patienceInCrash) > 0) [[maybe_unused]]
        const ssize_t written = ::write(STDOUT_FILENO, bytesInCrash_.data(), bytesInCrash_.size());
    restore();
}

void OwnedTerminal::giveBack() {
    beforeCrashReport(nullptr);
    restore();
    found_.reset();
    errors_ = {};
}

} // namespace larkspin
