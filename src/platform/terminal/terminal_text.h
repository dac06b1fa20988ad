// Texts that others have written, made harmless for a terminal as text/visible.h says, so that
// nothing in them can steer it.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

// A name, without markup, always on one line.
std::string shownName(std::string_view name);

// A text on one line, in which names stand as they are.
std::string shownLine(std::string_view text);

// Line breaks stay. Lines after the first are indented, so that none of them looks like a line of
// its own.
std::string shownText(std::string_view text);

// The same with the chat client's markup, for a terminal that shows bold, underline, italics and
// 24-bit colour.
std::string shownMarkup(std::string_view line);

// Rows of lists keep some of their parts out of sight by many blanks. Such a gap is closed.
std::string withoutGaps(std::string_view text);

} // namespace larkspin
