// The run of the program in which a handler began. A wait can outlive it, when the program restarts
// meanwhile: what is left of the handler then does nothing more, since what it would touch belongs
// to the next run.
#pragma once

#include "shell/app_state.h"

namespace larkspin {

class ThisRun {
public:
    explicit ThisRun(const AppState& state) : state_(state), number_(state.run) {}

    bool lasts() const { return state_.run == number_; }

private:
    const AppState& state_;
    unsigned number_;
};

} // namespace larkspin
