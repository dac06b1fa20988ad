// The names of a list in the client, which stand in the memory of the client's process.
#pragma once

#include "host/window_tree/window_calls.h"

#include <string>
#include <vector>

namespace larkspin {

// As many names as the list has rows: one that couldn't be read is empty, so that the others keep
// their numbers. None at all from a process that may not be read. What a list claims beyond
// `RowList::limit` isn't read.
std::vector<std::string> readHostRows(WindowCalls& calls, HostHandle list);

} // namespace larkspin
