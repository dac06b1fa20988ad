// Whether a described window shows something else than before, found out without drawing it.
#pragma once

#include "shell/window.h"

#include <cstddef>

namespace larkspin {

// A sum of all that its description shows at the moment.
std::size_t sumOfSeen(const Window& window);

} // namespace larkspin
