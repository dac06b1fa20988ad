// What the texts in the client's windows tell. Of a text in another form they give some piece,
// never more than that; characters are taken whole.
#pragma once

#include "host/host_client.h"

#include <string>
#include <string_view>

namespace larkspin {

// Of the first line in a notice, such as "Now Uploading ride.mp3". It leaves how far that is to be
// told by the others.
Notice noticeThatSays(std::string_view status);

std::string transferredFile(std::string_view status);

// Of the caption, such as "File Transfer - 45%". The upload's comes without the percent sign.
std::string uploadPercentage(std::string_view caption);
std::string downloadPercentage(std::string_view caption);

// Of the time left, such as "About 5 minutes remaining".
std::string uploadMinutes(std::string_view timeLeft);
std::string downloadMinutes(std::string_view timeLeft);

// Of the clock's notice, such as "It is 7:05 PM. You have been online for 12 minutes.".
std::string timeOnlineIn(std::string_view notice);

} // namespace larkspin
