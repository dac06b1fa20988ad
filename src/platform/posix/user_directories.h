// Where this user's programs keep their things, by the XDG base directory rules.
#pragma once

#include <string>

namespace larkspin {

std::string userDataHome();       // native
std::string userDataDirectory();  // larkspin's own below the data home, as a drive path
std::string userMusicDirectory(); // of the desktop, or the usual one; a drive path, or empty
std::string loginName();

// How the owner types a drive path: "~/Music", "/mnt/songs".
std::string typedPath(const std::string& path);

} // namespace larkspin
