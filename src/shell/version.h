// The program's version: major, minor, revision.
#pragma once

#include <string>

namespace larkspin {

inline constexpr int versionMajor = 4;
inline constexpr int versionMinor = 3;
inline constexpr int versionRevision = 11;

inline std::string versionText() {
    return std::to_string(versionMajor) + "." + std::to_string(versionMinor) + "." +
           std::to_string(versionRevision);
}

inline std::string buildText() {
    return "(build " + std::to_string(versionRevision) + ") ";
}

} // namespace larkspin
