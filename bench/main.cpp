#include "budget_table.h"
#include "works.h"

#include <vector>

// Takes the options of the benchmark library, such as --benchmark_filter=scan.
int main(int argc, char** argv) {
    std::string brief = "--benchmark_min_time=0.05"; // enough, with the repetitions of each work
    std::vector<char*> arguments(argv, argv + argc);
    arguments.insert(arguments.begin() + 1, brief.data());
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        return 2;

    larkspin::addListWorks();
    larkspin::addCompletionWorks();
    larkspin::addCounterWorks();
    larkspin::addChatWorks();
    larkspin::addRefreshWorks();
    larkspin::addScanWorks();
    larkspin::addSongWorks();
    larkspin::addGapWorks();
    larkspin::addTerminalWorks();
    larkspin::addScreenWorks();
    larkspin::addIrcWorks();
    larkspin::addConversationWorks();
    larkspin::addDesktopWorks();
    larkspin::addWindowWorks();
    larkspin::BudgetTable table;
    benchmark::RunSpecifiedBenchmarks(&table);
    table.printSummary();
    return table.allMeasured() ? 0 : 1;
}
