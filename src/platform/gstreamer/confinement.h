// Takes from this process what a player of strangers' files has no use for. Each of the steps
// holds for all that the process ever starts, and tells whether the kernel can do it; one that it
// can't do leaves the others as they are.
#pragma once

#include <string>

namespace larkspin {

// It ends with the process that started it, gains no rights, and leaves no dump of its memory.
void bindToParent();

// From here on, half a gigabyte of memory at most.
void limitMemory();

// This thread and those that it starts, so before there are others: files are read but for the
// system's libraries, instruments and what leads to the sound; written are the sound devices and
// what lies below a directory (none if empty); nothing is run, and no signal reaches another
// process.
bool closeFiles(const std::string& writableDirectory);

// This thread and those that it starts connect to no network.
bool closeNetwork();

// All threads: no programs and processes, no sockets but the open ones, nothing that changes files
// without writing to them, and nothing of what only an administrator or a debugger asks the kernel.
bool closeCalls();

} // namespace larkspin
