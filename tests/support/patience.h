// How long a test waits for what must come: only a test that fails takes that long.
#pragma once

#include <chrono>

namespace larkspin {

inline constexpr std::chrono::seconds patience(20);

} // namespace larkspin
