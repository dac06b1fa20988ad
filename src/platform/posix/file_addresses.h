// Files by their addresses (file:///home/jo/ride.mp3), as desktops, message buses and drops name
// them, and as they are named to the program when it is started. Paths are native ones. Names are
// bytes, which needn't be valid text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace larkspin {

std::string fileAddress(std::string_view path);

// Nothing for an address of anything but a file of this machine.
std::optional<std::string> pathOfAddress(std::string_view address);

// The address of what somebody has typed behind the program's name: a path, from the working
// directory on if it is relative, or a drive path as the program shows them. An address stays one,
// of whatever it is.
std::string addressOfTyped(std::string_view typed, std::string_view workingDirectory);

} // namespace larkspin
