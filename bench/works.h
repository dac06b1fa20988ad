// The works that are measured, and how each is put on the table. Times are in seconds.
//
// A work's counters tell the table about it: "size", "bytes" for the memory that it goes through,
// "budget", "amount" for what is measured in another unit than time (the label says which), "least"
// for a budget that it must reach, "questions" for how many another process was asked, and any
// other for a time beside it.
#pragma once

#include "text/row_list.h"

#include <benchmark/benchmark.h>
#include <chrono>
#include <functional>
#include <string>

namespace larkspin {

using WorkRun = std::function<void(benchmark::State&)>;

inline constexpr int fullSize = RowList::limit;
inline constexpr double noBudget = 0;

// What a song takes in both lists together: its text, the same folded, and two places.
inline constexpr double rowBytes = 360;

// A work over state.range(0) rows: a small playlist, half of the full one, and the full one, at
// which the budget counts.
benchmark::internal::Benchmark* addSizedWork(const std::string& name, double budget, WorkRun run);

// A work of one size only.
benchmark::internal::Benchmark* addWork(const std::string& name, double budget, WorkRun run);

template <typename Action> double secondsOf(Action&& action) {
    const auto begin = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

// The time of one iteration: that of the action alone, without what prepared it.
template <typename Action> void timed(benchmark::State& state, Action&& action) {
    state.SetIterationTime(secondsOf(action));
}

void addListWorks();
void addCompletionWorks();
void addCounterWorks();
void addChatWorks();
void addRefreshWorks();
void addScanWorks();
void addSongWorks();
void addGapWorks();
void addTerminalWorks();
void addScreenWorks();
void addIrcWorks();
void addConversationWorks();
void addDesktopWorks();
void addWindowWorks(); // the last, since it changes this process's variables

// Walks the tree as `find` does, to its end; the output is thrown away. False when it can't be run.
bool runFind(const std::string& nativePath);

} // namespace larkspin
