// The chat client's markup on a terminal.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

// The text for a terminal that shows bold, underline, italics and 24-bit colour. What is no tag
// of the client's stays as it is. Nothing in the text can steer the terminal: control characters
// come out as U+FFFD, but for line breaks. Stand-ins for characters that a file name may not
// hold are shown as those characters.
std::string shownMarkup(std::string_view text);

} // namespace larkspin
