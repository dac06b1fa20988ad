// Where this user's programs keep their things, by the XDG base directory rules.
#pragma once

#include <string>

namespace larkspin {

std::string userDataHome();       // native
std::string userDataDirectory();  // larkspin's own below the data home, as a drive path
std::string userMusicDirectory(); // of the desktop, as a drive path; empty where it has none
std::string loginName();

} // namespace larkspin
