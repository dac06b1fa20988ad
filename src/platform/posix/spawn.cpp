#include "platform/posix/spawn.h"

#include "platform/posix/no_signals.h"
#include "text/parts.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace larkspin {

namespace {

namespace fs = std::filesystem;

class FileActions {
public:
    explicit FileActions(const SpawnRequest& request) {
        ::posix_spawn_file_actions_init(&actions_);
        if (!request.directory.empty())
            ::posix_spawn_file_actions_addchdir_np(&actions_, request.directory.c_str());
        const bool hasChannel = request.channel >= 0;
        const int given[] = {request.input, request.output, request.channel};
        const int places[] = {STDIN_FILENO, STDOUT_FILENO, spawnChannel};
        // All go out of the way first, since each may be where another one has its place.
        const int spare = std::max(*std::ranges::max_element(given), spawnChannel) + 1;
        for (int at = 0; at < 3; ++at)
            duplicate(given[at], spare + at);
        for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            ::posix_spawn_file_actions_addopen(&actions_, standard, "/dev/null", O_RDWR, 0);
        for (int at = 0; at < 3; ++at)
            duplicate(given[at] < 0 ? -1 : spare + at, places[at]);
        // The started program gets none of this program's other descriptors.
        ::posix_spawn_file_actions_addclosefrom_np(&actions_,
                                                   hasChannel ? spawnChannel + 1 : spawnChannel);
    }
    ~FileActions() { ::posix_spawn_file_actions_destroy(&actions_); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;

    const posix_spawn_file_actions_t* get() const { return &actions_; }

private:
    void duplicate(int descriptor, int place) {
        if (descriptor >= 0)
            ::posix_spawn_file_actions_adddup2(&actions_, descriptor, place);
    }

    posix_spawn_file_actions_t actions_{};
};

// No signal is blocked in the new program, and none has a handler or is ignored.
class CleanStart {
public:
    explicit CleanStart(bool newSession) {
        ::posix_spawnattr_init(&attributes_);
        sigset_t none, all;
        sigemptyset(&none);
        sigfillset(&all);
        ::posix_spawnattr_setsigmask(&attributes_, &none);
        ::posix_spawnattr_setsigdefault(&attributes_, &all);
        const int flags =
            POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | (newSession ? POSIX_SPAWN_SETSID : 0);
        ::posix_spawnattr_setflags(&attributes_, static_cast<short>(flags));
    }
    ~CleanStart() { ::posix_spawnattr_destroy(&attributes_); }
    CleanStart(const CleanStart&) = delete;
    CleanStart& operator=(const CleanStart&) = delete;

    const posix_spawnattr_t* get() const { return &attributes_; }

private:
    posix_spawnattr_t attributes_{};
};

std::vector<char*> pointersTo(const std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (const std::string& text : texts)
        pointers.push_back(const_cast<char*>(text.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

// Everything that a start needs, made beforehand. The process that is forked must not allocate
// memory: another thread may have held the allocator at that moment.
class Start {
public:
    explicit Start(const SpawnRequest& request)
        : program_(request.program), command_{request.program}, environment_(request.environment),
          files_(request), clean_(request.newSession) {
        command_.insert(command_.end(), request.arguments.begin(), request.arguments.end());
        arguments_ = pointersTo(command_);
        variables_ = pointersTo(environment_);
    }

    std::optional<pid_t> run() {
        pid_t id = -1;
        if (::posix_spawn(&id, program_.c_str(), files_.get(), clean_.get(), arguments_.data(),
                          variables_.data()) != 0)
            return std::nullopt;
        return id;
    }

private:
    std::string program_;
    std::vector<std::string> command_, environment_;
    FileActions files_;
    CleanStart clean_;
    std::vector<char*> arguments_, variables_;
};

bool names(std::string_view variable, std::string_view name) {
    if (name.ends_with('*'))
        return variable.starts_with(name.substr(0, name.size() - 1));
    return variable.starts_with(name) && variable.substr(name.size()).starts_with('=');
}

} // namespace

std::optional<pid_t> spawn(const SpawnRequest& request) {
    return Start(request).run();
}

// The program is started by a process in between, which ends at once and is waited for here. The
// system then adopts the program and looks after its end.
bool spawnOrphan(const SpawnRequest& request) {
    Start start(request);
    const NoSignals quiet;
    const pid_t between = ::fork();
    if (between == 0)
        ::_exit(start.run() ? EXIT_SUCCESS : EXIT_FAILURE);
    int status = -1;
    return between > 0 && ::waitpid(between, &status, 0) == between && WIFEXITED(status) &&
           WEXITSTATUS(status) == EXIT_SUCCESS;
}

std::string programOnPath(std::string_view name) {
    const char* const value = std::getenv("PATH");
    for (std::string_view rest = value ? value : "/usr/local/bin:/usr/bin:/bin"; !rest.empty();) {
        const fs::path candidate = fs::path(takePart(rest, ':')) / name;
        std::error_code failed;
        if (candidate.is_absolute() && fs::is_regular_file(candidate, failed) &&
            ::access(candidate.c_str(), X_OK) == 0)
            return candidate;
    }
    return {};
}

std::vector<std::string> variables(const std::vector<std::string>& wanted) {
    std::vector<std::string> found;
    for (char** entry = environ; entry && *entry; ++entry)
        if (std::any_of(wanted.begin(), wanted.end(),
                        [&](const std::string& name) { return names(*entry, name); }))
            found.emplace_back(*entry);
    return found;
}

} // namespace larkspin
