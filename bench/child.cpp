#include "child.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

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
    void discardOutput() {
        posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    }
    const posix_spawn_file_actions_t* get() const { return &actions_; }

private:
    posix_spawn_file_actions_t actions_;
};

pid_t spawn(const std::vector<std::string>& command, const std::vector<std::string>& variables,
            const FileActions& actions) {
    const auto arguments = pointersTo(command);
    const auto environment = environmentWith(variables);
    pid_t id = -1;
    const int failed = posix_spawnp(&id, arguments[0], actions.get(), nullptr, arguments.data(),
                                    pointersTo(environment).data());
    return failed == 0 ? id : -1;
}

} // namespace

int runToEnd(const std::vector<std::string>& command) {
    FileActions actions;
    actions.discardOutput();
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

Child::~Child() {
    ::close(input_);
    const auto until = std::chrono::steady_clock::now() + timeToEnd;
    while (readMore(until))
        unread_.clear();
    while (::waitpid(id_, nullptr, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() > until)
            ::kill(id_, SIGKILL);
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    ::close(output_);
}

bool Child::readMore(std::chrono::steady_clock::time_point until) {
    using std::chrono::milliseconds;
    const auto left =
        std::chrono::ceil<milliseconds>(until - std::chrono::steady_clock::now()).count();
    pollfd readable{output_, POLLIN, 0};
    if (left <= 0 || ::poll(&readable, 1, static_cast<int>(left)) <= 0)
        return false;
    char bytes[4096];
    const ssize_t got = ::read(output_, bytes, sizeof bytes);
    if (got > 0)
        unread_.append(bytes, static_cast<std::size_t>(got));
    return got > 0;
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

void Child::tell(const std::string& line) {
    const std::string bytes = line + '\n';
    [[maybe_unused]] const ssize_t put = ::write(input_, bytes.data(), bytes.size());
}

} // namespace larkspin
