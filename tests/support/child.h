// Another program, run as a child process: its input is written, its lines are read as they
// come. Programs are looked for as a shell does. Nothing throws.
#pragma once

#include "support/pipe.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <memory>
#include <optional>
#include <poll.h>
#include <string>
#include <string_view>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

namespace larkspin {

// The variables of a program with a home of its own, no sound device, and nobody to order about.
inline std::vector<std::string> ownHome(const std::string& home) {
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

class Child {
public:
    // With these variables ("NAME=value") in place of its own. Nothing when it can't be run.
    static std::unique_ptr<Child> start(const std::string& program,
                                        const std::vector<std::string>& variables,
                                        const std::vector<std::string>& arguments = {}) {
        Pipe input, output;
        const pid_t id = run(program, variables, arguments, input.out(), output.in());
        return std::unique_ptr<Child>(id < 0 ? nullptr
                                             : new Child(id, input.takeIn(), output.takeOut()));
    }
    // The same on a terminal of its own, 80 columns wide.
    static std::unique_ptr<Child> startOnTerminal(const std::string& program,
                                                  const std::vector<std::string>& variables,
                                                  const std::vector<std::string>& arguments = {}) {
        const int own = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
        const winsize size{24, 80, 0, 0};
        if (own >= 0 && ::grantpt(own) == 0 && ::unlockpt(own) == 0 &&
            ::ioctl(own, TIOCSWINSZ, &size) == 0) {
            const pid_t id = run(program, variables, arguments, own, own, ::ptsname(own));
            if (id >= 0)
                return std::unique_ptr<Child>(new Child(id, own, own));
        }
        ::close(own);
        return nullptr;
    }

    // Ends its input, waits for its end, and kills it when that doesn't come.
    ~Child() {
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
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    void tell(const std::string& line) { write(line + '\n'); }
    // It may have to say something before it takes more.
    void write(std::string_view bytes) {
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
    void endInput() {
        if (input_ < 0)
            return;
        if (input_ == output_)
            write("\x04");
        else
            ::close(std::exchange(input_, -1));
    }
    void hangUp() { // closes its terminal
        ::close(output_);
        input_ = output_ = -1;
    }
    void resize(unsigned short rows, unsigned short columns) { // of its terminal
        const winsize size{rows, columns, 0, 0};
        ::ioctl(output_, TIOCSWINSZ, &size);
    }

    // Reads until the text has come; `says` reads the rest of its line as well. What was read is
    // gone then. False when it takes too long or the program has ended.
    bool says(std::string_view text, std::chrono::milliseconds within) {
        return shows(text, within) && shows("\n", within);
    }
    bool shows(std::string_view text, std::chrono::milliseconds within) {
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
    // The next line; empty when it takes too long.
    std::string line(std::chrono::milliseconds within) {
        const auto until = std::chrono::steady_clock::now() + within;
        while (unread_.find('\n') == std::string::npos)
            if (!readMore(until))
                return {};
        std::string line = unread_.substr(0, unread_.find('\n'));
        unread_.erase(0, line.size() + 1);
        return line;
    }
    // All that is left, until it closes its output.
    std::string rest(std::chrono::milliseconds within) {
        const auto until = std::chrono::steady_clock::now() + within;
        while (readMore(until))
            continue;
        return std::exchange(unread_, {});
    }

    // The exit status, once it has ended; nothing when that takes too long or a signal ended it.
    std::optional<int> ends(std::chrono::milliseconds within) {
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

    // Waits until its output, which nobody reads, comes to a halt. Returns how many bytes are in
    // it.
    int jams(std::chrono::milliseconds within) const {
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

    pid_t id() const { return id_; }
    long mostMemory() const { // KB that it has held at once; 0 when it has ended
        std::ifstream status("/proc/" + std::to_string(id_) + "/status");
        long size = 0;
        for (std::string word; status >> word;)
            if (word == "VmHWM:" && status >> size)
                return size;
        return 0;
    }

private:
    static constexpr auto timeToEnd = std::chrono::seconds(5);

    Child(pid_t id, int input, int output) : id_(id), input_(input), output_(output) {}

    // With these variables in place of its own; on the descriptors, or leading a session on that
    // terminal.
    static pid_t run(const std::string& program, std::vector<std::string> command,
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
    bool readMore(std::chrono::steady_clock::time_point until) {
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

    pid_t id_;
    int input_, output_; // the same descriptor for a terminal
    std::string unread_;
    std::optional<int> status_; // as waitpid tells it
};

} // namespace larkspin
