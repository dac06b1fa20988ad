// What others have a hand in (lines, names, captions, file names) on its way to the owner's eyes.
// Nothing in it can steer what shows it or make one line look like another: control characters,
// what turns the direction of writing, and what can't be seen come out as U+FFFD, and so do bytes
// that are no UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

// On one line whatever it holds: a name of somebody, or of a room. A stand-in for a character that
// a file name may not hold comes out as U+FFFD too, since that character may have no place in a
// name.
std::string visibleName(std::string_view name);

// Stand-ins are shown as the characters that they stand for. With `lineBreak` in place of each line
// break. What only joins characters or chooses their form is left out.
std::string visibleText(std::string_view text, std::string_view lineBreak);

} // namespace larkspin
