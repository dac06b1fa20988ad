#include "host/in_turn.h"

#include <utility>

namespace larkspin {

// The task that is at work stands further down on the stack and can't go on before this returns, so
// it can't be waited for here. What comes meanwhile is run by the frame that began it.
void InTurn::run(Task task) {
    if (!waiting_.empty() && !waiting_.front().run.lasts())
        waiting_.clear();
    if (isBusy_) {
        if (waiting_.size() < mostWaiting)
            waiting_.push_back({ThisRun(state_), std::move(task)});
        return;
    }
    isBusy_ = true;
    task();
    while (!waiting_.empty()) {
        const Waiting next = std::move(waiting_.front());
        waiting_.pop_front();
        if (next.run.lasts())
            next.task();
    }
    isBusy_ = false;
}

} // namespace larkspin
