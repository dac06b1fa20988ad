// Messages between two processes that can carry an open file.
#pragma once

#include "platform/posix/descriptor.h"

#include <span>
#include <string_view>
#include <sys/types.h>

namespace larkspin {

// These return what send(2) and recv(2) return. A file for which there is no descriptor free is a
// failure. Neither waits.
ssize_t sendWithFile(int channel, std::string_view bytes, const Descriptor* file);
ssize_t receiveWithFile(int channel, std::span<char> bytes, Descriptor& file);

} // namespace larkspin
