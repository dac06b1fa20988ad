// Takes from this process all rights that a player of strangers' files doesn't need. Each step also
// holds for everything that the process starts later, and returns whether the kernel can do it. A
// step that can't be done leaves the others as they are.
#pragma once

#include <string>

namespace larkspin {

// The process ends with the one that started it, gains no rights, and leaves no dump of its memory.
void bindToParent();

// From now on the process can take half a gigabyte of memory at most.
void limitMemory();

// For this thread and those that it starts, so it is to be called before there are others. It can
// read the system's libraries, the instruments, and what leads to the sound. It can write to the
// sound devices, and below one directory (none if empty). It can run nothing and signal no other
// process.
bool closeFiles(const std::string& writableDirectory);

// This thread and those that it starts can't connect to a network any more.
bool closeNetwork();

// For all threads: no programs and processes, no sockets but the open ones, no changes to files but
// by writing, and none of what only an administrator or a debugger asks of the kernel.
bool closeCalls();

} // namespace larkspin
