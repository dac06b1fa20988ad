// A song's length and position as text: minutes as they come, no hours, seconds in two digits.
#pragma once

#include <string>

namespace larkspin {

class MediaControl;

std::string plainlength(MediaControl& player);   // "3:07"; "0:00" when stopped
std::string plainposition(MediaControl& player); // "1:05 / 3:07"; zeros when nothing plays

} // namespace larkspin
