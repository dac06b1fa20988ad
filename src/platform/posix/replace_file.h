// Replacing a file as a whole, so that it holds either the old or the new contents at every moment;
// and removing what interrupted replacements have left. Paths are native.
#pragma once

#include "shell/files.h"

#include <string>

namespace larkspin {

// As Files::replace. A link stays a link: what it points to is replaced.
FileChange replaceFile(const std::string& path, const std::string& contents);

// Whether the path is a link into a directory that isn't there, as when a disk isn't mounted.
bool leadsNowhere(const std::string& path);

// Removes the unfinished files in a directory. Nobody may be writing there meanwhile.
void removeUnfinished(const std::string& directory);

} // namespace larkspin
