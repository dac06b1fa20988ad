// Work in the client that can't be done in the middle of its like, since there is one list, one
// selected row and one set of windows: what is asked for meanwhile runs after it.
#pragma once

#include "shell/event_loop.h"
#include "shell/this_run.h"

#include <cstddef>
#include <deque>

namespace larkspin {

class InTurn {
public:
    explicit InTurn(const AppState& state) : state_(state) {}

    // How many may wait. What is asked for beyond that is left undone.
    static constexpr std::size_t mostWaiting = 64;

    // Does the task at once, or, in the middle of another, after those that wait already. A task
    // that still waits when the run of the program ends is forgotten.
    void run(Task task);

private:
    struct Waiting {
        ThisRun run;
        Task task;
    };

    const AppState& state_;
    std::deque<Waiting> waiting_; // all of the same run
    bool isBusy_ = false;
};

} // namespace larkspin
