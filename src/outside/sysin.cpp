#include "outside/sysin.h"

namespace larkspin {

namespace {

constexpr int ntLine = 2;

std::string nameOfNt(int major, int minor) {
    if (major >= 5)
        return minor == 0 ? "windows 2000" : "windows xp";
    if (major == 4)
        return "windows nt 4";
    return major == 3 ? "windows nt 3.5x" : "windows nt";
}

std::string nameOfFour(int minor) {
    switch (minor) {
    case 0:
        return "windows 95";
    case 10:
        return "windows 98";
    case 90:
        return "windows me";
    default:
        return "windows 9x";
    }
}

} // namespace

std::string Sysin(const WindowsVersion& version) {
    if (version.platform == ntLine)
        return nameOfNt(version.major, version.minor);
    switch (version.major) {
    case 3:
        return "windows 3." + std::to_string(version.minor);
    case 4:
        return nameOfFour(version.minor);
    case 5:
        return "windows xp";
    default:
        return "unknown";
    }
}

} // namespace larkspin
