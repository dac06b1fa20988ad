// A terminal as a display: its size in characters, and how many bits of colour it shows.
#pragma once

#include "outside/machine_facts.h"

namespace larkspin {

// All 0 when the descriptor isn't a terminal; the bits are, when nothing is known of its colours.
DisplaySize terminalDisplay(int descriptor);

} // namespace larkspin
