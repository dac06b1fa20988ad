// The copy of the program that runs already, by its name on the session bus.
#pragma once

#include <string>

namespace larkspin {

// Asks it to come forward. Nothing without a bus, or when it has no windows.
void raiseRunningCopy(const std::string& busAddress);

} // namespace larkspin
