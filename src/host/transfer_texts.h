// What the texts on the client's transfer windows tell. Of a text in another form they give some
// piece, never more than that; characters are taken whole.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

// Of the status, such as "Now Uploading ride.mp3".
std::string transferredFile(std::string_view status);
bool tellsOfUpload(std::string_view status);
bool tellsOfTransfer(std::string_view status); // one that is running
bool tellsOfEnd(std::string_view status);

// Of the caption, such as "File Transfer - 45%". The upload's comes without the percent sign.
std::string uploadPercentage(std::string_view caption);
std::string downloadPercentage(std::string_view caption);

// Of the time left, such as "About 5 minutes remaining".
std::string uploadMinutes(std::string_view timeLeft);
std::string downloadMinutes(std::string_view timeLeft);

} // namespace larkspin
