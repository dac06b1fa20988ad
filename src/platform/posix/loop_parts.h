// What every event loop on a POSIX system has in common: its clocks, and signals that come as
// events by a descriptor.
#pragma once

#include "shell/event_loop.h"

#include <initializer_list>

namespace larkspin {

Nanoseconds steadyTime();

// Keeps the usual effect of these signals away, also from threads that start later.
void blockSignals(std::initializer_list<int> signals);

// Blocks them, and gives a descriptor that can be read when one has come; -1 where there is none.
int openSignals(std::initializer_list<int> signals);
bool takeSignal(int descriptor);

} // namespace larkspin
