// By what one sees from outside, and at no cost, that a sound device may have come.
#pragma once

#include <cstdint>
#include <vector>

namespace larkspin {

// Changes when the socket of a sound server is made anew, or a sound card comes or goes. What a
// server on another machine does isn't seen.
std::vector<std::int64_t> deviceSigns();

} // namespace larkspin
