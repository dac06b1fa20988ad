// Putting a text after what a file holds. The path is native.
#pragma once

#include "shell/files.h"

#include <string>
#include <string_view>

namespace larkspin {

// As Files::append. A link stays a link: what it points to grows.
FileChange appendToFile(const std::string& path, std::string_view text);

} // namespace larkspin
