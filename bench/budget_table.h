// The table that the benchmarks print: a row per work and size, with the budget and whether it
// was kept. Where a work was measured at several sizes, the row says by how much the time
// grows when the size doubles; what goes through more memory than the processor's cache holds
// may grow by more.
#pragma once

#include <benchmark/benchmark.h>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace larkspin {

class BudgetTable : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;

    // The last lines: all that was missed.
    void printSummary() const;
    bool allMeasured() const { return failures_ == 0; }

private:
    struct Measured {
        double size, seconds;
    };

    void printRow(const Run& run);
    double growthLimit(std::optional<double> bytes) const;
    std::optional<double> growth(const std::string& work, Measured now);

    std::map<std::string, Measured> before_; // each work's row of the size below
    double cacheBytes_ = 0;                  // of the largest cache that a processor has to itself
    std::vector<std::string> missed_;
    int failures_ = 0;
};

} // namespace larkspin
