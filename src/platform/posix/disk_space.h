// How much room there is on the disk that holds a directory.
#pragma once

#include "outside/machine_facts.h"

#include <optional>
#include <string>

namespace larkspin {

// Nothing where there is no such directory. The path is native.
std::optional<DriveSpace> spaceOf(const std::string& directory);

} // namespace larkspin
