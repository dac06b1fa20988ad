// The owner's time. The zone is looked up anew each time: he may travel while the program runs.
#pragma once

#include <ctime>

namespace larkspin {

std::tm localTime(std::time_t moment);

} // namespace larkspin
