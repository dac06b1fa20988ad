#include "works.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace larkspin {

namespace {

constexpr int repetitions = 7;

void setBudget(benchmark::State& state, double budget) {
    if (budget != noBudget)
        state.counters["budget"] = budget;
}

} // namespace

benchmark::internal::Benchmark* addSizedWork(const std::string& name, double budget, WorkRun run) {
    const auto measured = [budget, run = std::move(run)](benchmark::State& state) {
        const auto rows = static_cast<double>(state.range(0));
        state.counters["size"] = rows;
        state.counters["bytes"] = rows * rowBytes;
        if (state.range(0) == fullSize)
            setBudget(state, budget);
        run(state);
    };
    return benchmark::RegisterBenchmark(name.c_str(), measured)
        ->Arg(1000)
        ->Arg((fullSize + 1) / 2)
        ->Arg(fullSize)
        ->UseManualTime()
        ->Repetitions(repetitions)
        ->ReportAggregatesOnly();
}

benchmark::internal::Benchmark* addWork(const std::string& name, double budget, WorkRun run) {
    const auto measured = [budget, run = std::move(run)](benchmark::State& state) {
        setBudget(state, budget);
        run(state);
    };
    return benchmark::RegisterBenchmark(name.c_str(), measured)
        ->Repetitions(repetitions)
        ->ReportAggregatesOnly();
}

bool runFind(const std::string& nativePath) {
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    std::string name = "find", path = nativePath;
    char* const arguments[] = {name.data(), path.data(), nullptr};
    pid_t id = -1;
    const int failed = ::posix_spawnp(&id, "find", &actions, nullptr, arguments, environ);
    ::posix_spawn_file_actions_destroy(&actions);
    int status = -1;
    return failed == 0 && ::waitpid(id, &status, 0) == id && status == 0;
}

} // namespace larkspin
