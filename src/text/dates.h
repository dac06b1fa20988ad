// Dates and times of day as the owner is told them.
#pragma once

#include <ctime>
#include <string>

namespace larkspin {

std::string longDate(const std::tm& moment);    // "Friday, December 19, 2003"
std::string shortDate(const std::tm& moment);   // "12/19/03"
std::string clockTime(const std::tm& moment);   // "07:05 pm"
std::string dateAndTime(const std::tm& moment); // both, joined by " at "

} // namespace larkspin
