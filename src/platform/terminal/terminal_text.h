// What others have a hand in (lines, names, captions, file names) on its way to a terminal. Nothing
// in it can steer the terminal or make one line look like another: control characters, what turns
// the direction of writing, and what can't be seen come out as U+FFFD. Stand-ins for characters
// that a file name may not hold are shown as those characters.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

// On one line whatever it holds, without markup: a name.
std::string shownName(std::string_view name);

// Line breaks stay, and the lines behind one are set in, so that none of them opens at the edge.
// What only joins characters or chooses their form is left out.
std::string shownText(std::string_view text);

// The same with the chat client's markup, for a terminal that shows bold, underline, italics and
// 24-bit colour.
std::string shownMarkup(std::string_view line);

} // namespace larkspin
