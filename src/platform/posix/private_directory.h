// Directories that are for the owner alone. Paths are native.
#pragma once

#include <string>

namespace larkspin {

// Makes the directory with those above it, open to the owner alone. One that is there stays as it
// is. True when it is there afterwards; else errno tells why not.
bool makePrivateDirectory(const std::string& path);

// Takes the rights of everybody else from a directory; the owner keeps those he has. Links to it
// are followed.
void closeToOthers(const std::string& path);

} // namespace larkspin
