#include "works.h"

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

} // namespace larkspin
