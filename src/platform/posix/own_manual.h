// The manual, where it lies on this machine: installed, or in the directory that the program was
// built in.
#pragma once

#include <string>

namespace larkspin {

std::string ownManual(); // a drive path; empty where there is none

} // namespace larkspin
