// Line breaks: how the program's files end their lines, and what becomes of the breaks in a text
// that has one line to stand on.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

inline constexpr std::string_view lineEnd = "\r\n"; // in all files that are kept

inline constexpr std::string_view lineBreaks = "\r\n";
inline constexpr std::string_view lineBreaksAndNul{"\r\n\0", 3}; // a NUL ends a line elsewhere

// Each of them left out, or become a blank.
std::string withoutBreaks(std::string text, std::string_view breaks = lineBreaks);
std::string breaksAsBlanks(std::string text, std::string_view breaks = lineBreaks);

// Each written as its escape, `\n` or `\r`.
std::string breaksEscaped(std::string_view text);

// Control characters and Unicode's own line breaks become blanks.
std::string controlsAsBlanks(std::string_view text);

} // namespace larkspin
