// The name of a Windows by what it reports of its version.
#pragma once

#include <string>

namespace larkspin {

struct WindowsVersion {
    int platform, major, minor; // platform 2 is the NT line
};

std::string Sysin(const WindowsVersion& version);

} // namespace larkspin
