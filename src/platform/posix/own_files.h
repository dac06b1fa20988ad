// The files that belong to the program, where they lie on this machine: installed, or in the
// directory that the program was built in.
#pragma once

#include <string>

namespace larkspin {

std::string ownPlayer(); // the program of the player's process, a native path
std::string ownBridge(); // of the bridge among the client's windows; empty where there is none
std::string ownManual(); // a drive path; empty where there is none

} // namespace larkspin
