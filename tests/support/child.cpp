#include "support/child.h"

#include "support/pipe.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>

namespace larkspin {

namespace {

constexpr auto timeToEnd = std::chrono::seconds(5);

// With these variables in place of its own; on the descriptors, or leading a session on that
// terminal.
pid_t run(const std::string& program, std::vector<std::string> command,
          const std::vector<std::string>& after, int input, int output,
          const char* terminal = nullptr) {
    command.insert(command.begin(), "env");
    command.push_back(program);
    command.insert(command.end(), after.begin(), after.end());
    std::vector<char*> arguments;
    for (std::string& argument : command)
        arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    const pid_t id = ::fork();
    if (id != 0)
        return id;
    if (terminal && ::setsid() > 0) // leading it, it gets the terminal as its own by opening it
        input = output = ::open(terminal, O_RDWR | O_CLOEXEC);
    ::dup2(input, STDIN_FILENO);
    ::dup2(output, STDOUT_FILENO);
    ::execvp(arguments[0], arguments.data());
    ::_exit(127);
}

} // namespace

std::vector<std::string> ownHome(const std::string& home) {
    return {"HOME=" + home,
            "XDG_DATA_HOME=" + home,
            "XDG_RUNTIME_DIR=" + home,
            "PULSE_SERVER=none",
            "PIPEWIRE_REMOTE=none",
            "ALSA_CONFIG_PATH=/dev/null",
            "DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent",
            "DBUS_SYSTEM_BUS_ADDRESS=unix:path=/nonexistent",
            "LSAN_OPTIONS=detect_leaks=0:intercept_tls_get_addr=0"};
}

std::unique_ptr<Child> Child::start(const std::string& program,
                                    const std::vector<std::string>& variables,
                                    const std::vector<std::string>& arguments) {
    Pipe input, output;
    const pid_t id = run(program, variables, arguments, input.out(), output.in());
    return std::unique_ptr<Child>(id < 0 ? nullptr
                                         : new Child(id, input.takeIn(), output.takeOut()));
}

std::unique_ptr<Child> Child::startOnTerminal(const std::string& program,
                                              const std::vector<std::string>& variables) {
    const int own = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    const winsize size{24, 80, 0, 0};
    if (own >= 0 && ::grantpt(own) == 0 && ::unlockpt(own) == 0 &&
        ::ioctl(own, TIOCSWINSZ, &size) == 0) {
        const pid_t id = run(program, variables, {}, own, own, ::ptsname(own));
        if (id >= 0)
            return std::unique_ptr<Child>(new Child(id, own, own));
    }
    ::close(own);
    return nullptr;
}

Child::~Child() {
    endInput();
    const auto until = std::chrono::steady_clock::now() + timeToEnd;
    while (output_ >= 0 && readMore(until))
        unread_.clear();
    if (!status_ && !ends(std::chrono::milliseconds(100))) {
        ::kill(id_, SIGKILL);
        ends(timeToEnd);
    }
    if (output_ >= 0)
        ::close(output_);
}

void Child::endInput() {
    if (input_ < 0)
        return;
    if (input_ == output_)
        write("\x04");
    else
        ::close(std::exchange(input_, -1));
}

void Child::hangUp() {
    ::close(output_);
    input_ = output_ = -1;
}

void Child::resize(unsigned short rows, unsigned short columns) {
    const winsize size{rows, columns, 0, 0};
    ::ioctl(output_, TIOCSWINSZ, &size);
}

// It may have to say something before it takes more.
void Child::write(std::string_view bytes) {
    ::fcntl(input_, F_SETFL, O_NONBLOCK);
    const auto until = std::chrono::steady_clock::now() + timeToEnd;
    while (!bytes.empty() && std::chrono::steady_clock::now() < until) {
        const ssize_t put = ::write(input_, bytes.data(), bytes.size());
        if (put > 0) {
            bytes.remove_prefix(static_cast<std::size_t>(put));
            continue;
        }
        pollfd ready[] = {{input_, POLLOUT, 0}, {output_, POLLIN, 0}};
        ::poll(ready, 2, 100);
        if (ready[1].revents & POLLIN)
            readMore(until);
        else if (ready[0].revents & (POLLERR | POLLHUP))
            return;
    }
}

bool Child::readMore(std::chrono::steady_clock::time_point until) {
    using std::chrono::milliseconds;
    const auto left =
        std::chrono::ceil<milliseconds>(until - std::chrono::steady_clock::now()).count();
    pollfd readable{output_, POLLIN, 0};
    if (left <= 0 || ::poll(&readable, 1, static_cast<int>(left)) <= 0)
        return false;
    char bytes[65536];
    const ssize_t got = ::read(output_, bytes, sizeof bytes);
    if (got > 0)
        unread_.append(bytes, static_cast<std::size_t>(got));
    return got > 0;
}

int Child::jams(std::chrono::milliseconds within) const {
    constexpr auto quiet = std::chrono::milliseconds(200);
    const auto until = std::chrono::steady_clock::now() + within;
    int waiting = 0, before = -1;
    while (::ioctl(output_, FIONREAD, &waiting) == 0 && (waiting == 0 || waiting != before) &&
           std::chrono::steady_clock::now() < until) {
        before = waiting;
        std::this_thread::sleep_for(quiet);
    }
    return waiting;
}

long Child::mostMemory() const {
    std::ifstream status("/proc/" + std::to_string(id_) + "/status");
    long size = 0;
    for (std::string word; status >> word;)
        if (word == "VmHWM:" && status >> size)
            return size;
    return 0;
}

bool Child::says(std::string_view text, std::chrono::milliseconds within) {
    return shows(text, within) && shows("\n", within);
}

bool Child::shows(std::string_view text, std::chrono::milliseconds within) {
    const auto until = std::chrono::steady_clock::now() + within;
    for (;;) {
        const auto found = unread_.find(text);
        if (found != std::string::npos) {
            unread_.erase(0, found + text.size());
            return true;
        }
        if (!readMore(until))
            return false;
    }
}

std::string Child::line(std::chrono::milliseconds within) {
    const auto until = std::chrono::steady_clock::now() + within;
    while (unread_.find('\n') == std::string::npos)
        if (!readMore(until))
            return {};
    std::string line = unread_.substr(0, unread_.find('\n'));
    unread_.erase(0, line.size() + 1);
    return line;
}

std::string Child::rest(std::chrono::milliseconds within) {
    const auto until = std::chrono::steady_clock::now() + within;
    while (readMore(until))
        continue;
    return std::exchange(unread_, {});
}

std::optional<int> Child::ends(std::chrono::milliseconds within) {
    const auto until = std::chrono::steady_clock::now() + within;
    while (!status_) {
        int status = 0;
        if (::waitpid(id_, &status, WNOHANG) == id_)
            status_ = status;
        else if (std::chrono::steady_clock::now() > until)
            return std::nullopt;
        else
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    if (!WIFEXITED(*status_))
        return std::nullopt;
    return WEXITSTATUS(*status_);
}

} // namespace larkspin
