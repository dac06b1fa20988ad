// The names of a list's rows, which stand in the memory of the list's process.
#pragma once

#include "platform/bridge/windows/sent_messages.h"

#include <string>
#include <vector>

namespace larkspin::bridge {

// Rows for which no time is left are empty, as those are that can't be read.
std::vector<std::string> rowFields(SentMessages& messages, HWND list, const RowRecord& record,
                                   std::size_t most, const Deadline& deadline);

} // namespace larkspin::bridge
