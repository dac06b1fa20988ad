// The names of those who are in a room, for a line that is being typed.
#pragma once

#include "library/completion.h"

#include <string_view>

namespace larkspin {

class ShownRoom;

// Completes the last word of a line up to the cursor; one that begins the line gets a colon. The
// owner's own name isn't among the names, nor is one that couldn't be shown as it is.
Completion completionOfNames(const ShownRoom& room, std::string_view typed);

} // namespace larkspin
