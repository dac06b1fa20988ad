// What the texts in the client's windows tell. Of a text in another form they give some piece,
// never more than that; characters are taken whole.
#pragma once

#include "host/host_client.h"

#include <string>
#include <string_view>

namespace larkspin {

// Reads the first line of a notice, such as "Now Uploading ride.mp3". How far an upload is isn't in
// that line: the functions below read it from other texts.
Notice noticeThatSays(std::string_view status);

std::string transferredFile(std::string_view status);

// Read a window's caption, such as "File Transfer - 45%". The upload's percentage is returned
// without the percent sign.
std::string uploadPercentage(std::string_view caption);
std::string downloadPercentage(std::string_view caption);

// Read the line about the time left, such as "About 5 minutes remaining".
std::string uploadMinutes(std::string_view timeLeft);
std::string downloadMinutes(std::string_view timeLeft);

// Reads the notice of the client's clock, such as "It is 7:05 PM. You have been online for 12
// minutes.".
std::string timeOnlineIn(std::string_view notice);

} // namespace larkspin
