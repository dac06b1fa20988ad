// Renaming that never replaces what bears the new name already. Paths are native, both on one disk.
// False when it can't be done, and errno tells why: EEXIST for a name that is taken.
#pragma once

#include <string>

namespace larkspin {

// In one step where the file system can. A new name that a file system takes for the old one, since
// only the case differs, isn't taken.
bool renameFile(const std::string& from, const std::string& to);

// The way for file systems that know no renaming without replacing: an empty file of our own claims
// the name first, and is what the renaming replaces.
bool claimAndRename(const std::string& from, const std::string& to);

} // namespace larkspin
