// Texts that others have written (lines, names, captions, file names) on their way to the owner's
// eyes. Nothing in them can steer the window or terminal that shows them, or make one line look
// like another: control characters, characters that turn the direction of writing, and those that
// can't be seen come out as U+FFFD, and so do bytes that are no UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

// The name of a person or a room, always on one line. A stand-in comes out as U+FFFD too: the
// character that it stands for may have no place in a name.
std::string visibleName(std::string_view name);

// Stand-ins are shown as the characters that they stand for, and each line break as `lineBreak`.
// Characters that only join others or choose their form are left out.
std::string visibleText(std::string_view text, std::string_view lineBreak);

} // namespace larkspin
