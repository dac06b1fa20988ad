// Takes from this process what a player of strangers' files has no use for. What the kernel
// doesn't know is left as it is.
#pragma once

#include <string>

namespace larkspin {

// It ends with the process that started it, gains no rights, and leaves no dump of its memory.
void bindToParent();

// From here on, this thread and those that it starts write to no files but the sound devices
// and those below a directory (none if empty), send no signals to other processes, and take
// half a gigabyte of memory at most.
void confine(const std::string& writableDirectory);

} // namespace larkspin
