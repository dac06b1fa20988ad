#include "budget_table.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace larkspin {

namespace {

constexpr double growthInCache = 2.3, growthInMemory = 2.6;
constexpr const char* rowFormat = "%-42s %8s %8s  %10s %10s  %-7s %s%s\n";

std::string printed(const char* format, double value, const std::string& unit) {
    char text[32];
    std::snprintf(text, sizeof text, format, value);
    return text + (' ' + unit);
}

std::string significant(double value, const std::string& unit) {
    return printed(value < 10 ? "%.2f" : value < 100 ? "%.1f" : "%.0f", value, unit);
}

std::string timeText(double seconds) {
    if (seconds < 1e-6)
        return significant(seconds * 1e9, "ns");
    if (seconds < 1e-3)
        return significant(seconds * 1e6, "us");
    if (seconds < 1)
        return significant(seconds * 1e3, "ms");
    return significant(seconds, "s");
}

std::string sizeText(double size) {
    std::string text = std::to_string(std::lround(size));
    for (auto at = static_cast<std::ptrdiff_t>(text.size()) - 3; at > 0; at -= 3)
        text.insert(static_cast<std::size_t>(at), 1, ',');
    return text;
}

std::string bytesText(double bytes) {
    return significant(bytes / 1e6, "MB");
}

std::optional<double> counter(const benchmark::BenchmarkReporter::Run& run, const char* name) {
    const auto found = run.counters.find(name);
    if (found == run.counters.end())
        return std::nullopt;
    return found->second.value;
}

// The counters that are no part of a row are to be read beside it: times, but for one.
std::string notes(const benchmark::BenchmarkReporter::Run& run) {
    std::string text;
    for (const auto& [name, value] : run.counters)
        if (name != "size" && name != "bytes" && name != "budget" && name != "least" &&
            name != "amount")
            text += "  " + name + ": " +
                    (name == "questions" ? sizeText(value.value) : timeText(value.value));
    return text;
}

} // namespace

bool BudgetTable::ReportContext(const Context& context) {
    for (const auto& cache : context.cpu_info.caches)
        if (cache.num_sharing == 1)
            cacheBytes_ = std::max<double>(cacheBytes_, cache.size);
    std::printf("Times are medians, on %d processors with %s of cache each.\n\n",
                context.cpu_info.num_cpus, bytesText(cacheBytes_).c_str());
    std::printf(rowFormat, "work", "size", "memory", "measured", "budget", "verdict",
                "growth by doubling", "");
    return true;
}

void BudgetTable::ReportRuns(const std::vector<Run>& runs) {
    const auto failed =
        std::find_if(runs.begin(), runs.end(), [](const Run& run) { return run.error_occurred; });
    if (failed != runs.end()) {
        const auto size = counter(*failed, "size");
        std::printf(rowFormat, failed->run_name.function_name.c_str(),
                    size ? sizeText(*size).c_str() : "", "", failed->error_message.c_str(), "", "",
                    "", "");
        ++failures_;
    }
    for (const Run& run : runs)
        if (!run.error_occurred && run.aggregate_name == "median")
            printRow(run);
    std::fflush(stdout);
}

void BudgetTable::printRow(const Run& run) {
    const std::string& work = run.run_name.function_name;
    const auto size = counter(run, "size"), bytes = counter(run, "bytes"),
               least = counter(run, "least"), amount = counter(run, "amount"),
               budget = least ? least : counter(run, "budget");
    const double seconds =
        run.GetAdjustedRealTime() / benchmark::GetTimeUnitMultiplier(run.time_unit);
    const auto text = [&](double value) {
        return amount ? significant(value, run.report_label) : timeText(value);
    };
    const double value = amount.value_or(seconds);
    const std::string sizeColumn = size ? sizeText(*size) : "";
    const std::string place = size ? work + " (" + sizeColumn + ")" : work;

    std::string verdict, growthColumn;
    if (budget)
        verdict = (least ? value >= *least : value <= *budget) ? "ok" : "MISSED";
    if (verdict == "MISSED")
        missed_.push_back(place + ": " + text(value) + " of " + text(*budget));
    if (size && !amount) {
        if (const auto factor = growth(work, {*size, seconds})) {
            growthColumn = significant(*factor, "x");
            const double limit = growthLimit(bytes);
            growthColumn += " of " + significant(limit, "x");
            if (*factor > limit) {
                missed_.push_back(place + ": grows by " + growthColumn);
                growthColumn += " MISSED";
            }
        }
    }
    std::printf(rowFormat, work.c_str(), sizeColumn.c_str(), bytes ? bytesText(*bytes).c_str() : "",
                text(value).c_str(), budget ? text(*budget).c_str() : "", verdict.c_str(),
                growthColumn.c_str(), notes(run).c_str());
}

double BudgetTable::growthLimit(std::optional<double> bytes) const {
    return bytes.value_or(0) > cacheBytes_ ? growthInMemory : growthInCache;
}

// From the time of the size below, scaled to a doubling.
std::optional<double> BudgetTable::growth(const std::string& work, Measured now) {
    const auto [before, isFirst] = before_.try_emplace(work, now);
    if (isFirst)
        return std::nullopt;
    const double doublings = std::log2(now.size / before->second.size);
    const double factor = std::pow(now.seconds / before->second.seconds, 1 / doublings);
    before->second = now;
    return factor;
}

void BudgetTable::printSummary() const {
    std::printf("\n");
    if (failures_ > 0)
        std::printf("Rows that could not be measured: %d\n", failures_);
    if (missed_.empty())
        std::printf("No measured budget was missed.\n");
    for (const std::string& line : missed_)
        std::printf("Missed: %s\n", line.c_str());
}

} // namespace larkspin
