// What others have a hand in on its way to a terminal, as `text/visible.h` has it, so that nothing
// in it can steer the terminal.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

// On one line whatever it holds, without markup: a name.
std::string shownName(std::string_view name);

// Line breaks stay, and the lines after one are set in, so that none of them opens at the edge.
std::string shownText(std::string_view text);

// The same with the chat client's markup, for a terminal that shows bold, underline, italics and
// 24-bit colour.
std::string shownMarkup(std::string_view line);

} // namespace larkspin
