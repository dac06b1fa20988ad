// A message between two processes that an open file may come along with.
#pragma once

#include "platform/posix/descriptor.h"

#include <span>
#include <string_view>
#include <sys/types.h>

namespace larkspin {

// As send(2) and recv(2) answer; a file that finds no room is a failure. Neither waits.
ssize_t sendWithFile(int channel, std::string_view bytes, const Descriptor* file);
ssize_t receiveWithFile(int channel, std::span<char> bytes, Descriptor& file);

} // namespace larkspin
