// A song's length and position as text: minutes as they come, no hours, seconds in two digits.
// The rich forms are said in the room and leave their last bold open; the plain ones stand in boxes
// and on the media window.
#pragma once

#include <string>

namespace larkspin {

class MediaControl;

std::string plaintime(double seconds); // "3:07"

std::string richlength(MediaControl& player);    // "<b>3</b>:<b>07"; zeros when stopped
std::string plainlength(MediaControl& player);   // "3:07"; "0:00" when stopped
std::string richposition(MediaControl& player);  // "<b>1</b>:<b>05 / <b>3</b>:<b>07"
std::string plainposition(MediaControl& player); // "1:05 / 3:07"; zeros when nothing plays

} // namespace larkspin
