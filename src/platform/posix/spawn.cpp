#include "platform/posix/spawn.h"

#include "platform/posix/no_signals.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>

namespace larkspin {

namespace {

class FileActions {
public:
    FileActions(int channel, const std::string& directory) {
        ::posix_spawn_file_actions_init(&actions_);
        if (!directory.empty())
            ::posix_spawn_file_actions_addchdir_np(&actions_, directory.c_str());
        // The channel goes first, since it may be one of the streams that are opened anew below.
        if (channel >= 0)
            ::posix_spawn_file_actions_adddup2(&actions_, channel, spawnChannel);
        for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            ::posix_spawn_file_actions_addopen(&actions_, standard, "/dev/null", O_RDWR, 0);
        // The started program gets none of this program's other descriptors.
        ::posix_spawn_file_actions_addclosefrom_np(&actions_,
                                                   channel >= 0 ? spawnChannel + 1 : spawnChannel);
    }
    ~FileActions() { ::posix_spawn_file_actions_destroy(&actions_); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;

    const posix_spawn_file_actions_t* get() const { return &actions_; }

private:
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
          files_(request.channel, request.directory), clean_(request.newSession) {
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

std::vector<std::string> variables(const std::vector<std::string>& wanted) {
    std::vector<std::string> found;
    for (char** entry = environ; entry && *entry; ++entry)
        if (std::any_of(wanted.begin(), wanted.end(),
                        [&](const std::string& name) { return names(*entry, name); }))
            found.emplace_back(*entry);
    return found;
}

} // namespace larkspin
