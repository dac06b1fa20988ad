#include "support/child.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <poll.h>
#include <spawn.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <utility>

extern char** environ;

namespace larkspin {

namespace {

constexpr auto timeToEnd = std::chrono::seconds(5);

std::vector<char*> pointersTo(const std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (const std::string& text : texts)
        pointers.push_back(const_cast<char*>(text.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<std::string> environmentWith(const std::vector<std::string>& variables) {
    std::vector<std::string> all = variables;
    for (char** entry = environ; *entry; ++entry) {
        const std::string_view own = *entry;
        const std::string_view name = own.substr(0, own.find('=') + 1);
        if (std::none_of(variables.begin(), variables.end(),
                         [&](const std::string& other) { return other.starts_with(name); }))
            all.emplace_back(own);
    }
    return all;
}

class FileActions {
public:
    FileActions() { posix_spawn_file_actions_init(&actions_); }
    ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;

    void use(int descriptor, int as) {
        posix_spawn_file_actions_adddup2(&actions_, descriptor, as);
    }
    void open(const char* path, int as) {
        posix_spawn_file_actions_addopen(&actions_, as, path, O_RDWR, 0);
    }
    const posix_spawn_file_actions_t* get() const { return &actions_; }

private:
    posix_spawn_file_actions_t actions_;
};

// With flags of posix_spawnattr_setflags.
pid_t spawn(const std::vector<std::string>& command, const std::vector<std::string>& variables,
            const FileActions& actions, short flags = 0) {
    const auto arguments = pointersTo(command);
    const auto environment = environmentWith(variables);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, flags);
    pid_t id = -1;
    const int failed = posix_spawnp(&id, arguments[0], actions.get(), &attributes, arguments.data(),
                                    pointersTo(environment).data());
    posix_spawnattr_destroy(&attributes);
    return failed == 0 ? id : -1;
}

} // namespace

int runToEnd(const std::vector<std::string>& command) {
    FileActions actions;
    actions.open("/dev/null", STDOUT_FILENO);
    const pid_t id = spawn(command, {}, actions);
    int status = -1;
    if (id < 0 || ::waitpid(id, &status, 0) != id || !WIFEXITED(status))
        return -1;
    return WEXITSTATUS(status);
}

std::unique_ptr<Child> Child::start(const std::string& program,
                                    const std::vector<std::string>& variables) {
    int input[2], output[2];
    if (::pipe2(input, O_CLOEXEC) != 0)
        return nullptr;
    if (::pipe2(output, O_CLOEXEC) != 0) {
        ::close(input[0]);
        ::close(input[1]);
        return nullptr;
    }
    FileActions actions;
    actions.use(input[0], STDIN_FILENO);
    actions.use(output[1], STDOUT_FILENO);
    const pid_t id = spawn({program}, variables, actions);
    ::close(input[0]);
    ::close(output[1]);
    if (id < 0) {
        ::close(input[1]);
        ::close(output[0]);
        return nullptr;
    }
    return std::unique_ptr<Child>(new Child(id, input[1], output[0]));
}

std::unique_ptr<Child> Child::startOnTerminal(const std::string& program,
                                              const std::vector<std::string>& variables) {
    const int own = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    const winsize size{24, 80, 0, 0};
    const char* const name = own >= 0 && ::grantpt(own) == 0 && ::unlockpt(own) == 0 &&
                                     ::ioctl(own, TIOCSWINSZ, &size) == 0
                                 ? ::ptsname(own)
                                 : nullptr;
    if (!name) {
        ::close(own);
        return nullptr;
    }
    FileActions actions;
    actions.open(name, STDIN_FILENO);
    actions.use(STDIN_FILENO, STDOUT_FILENO);
    // Leading a session, it gets the terminal as its own by opening it.
    const pid_t id = spawn({program}, variables, actions, POSIX_SPAWN_SETSID);
    if (id < 0) {
        ::close(own);
        return nullptr;
    }
    return std::unique_ptr<Child>(new Child(id, own, own));
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
    const auto until = std::chrono::steady_clock::now() + within;
    for (;;) {
        for (auto end = unread_.find('\n'); end != std::string::npos; end = unread_.find('\n')) {
            const std::string line = unread_.substr(0, end);
            unread_.erase(0, end + 1);
            if (line.find(text) != std::string::npos)
                return true;
        }
        if (!readMore(until))
            return false;
    }
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
