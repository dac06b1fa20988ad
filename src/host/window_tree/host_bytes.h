// What the client's bytes mean: its text is single bytes in code page 1252, where the program's is
// UTF-8, and the lowest byte of a number stands first.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace larkspin {

// Every byte becomes a character, those that the code page leaves out the control character of
// their number, so that bytes survive the way there and back. But for the ends of lines, which
// become blanks: others have written these texts, and if one were said on two lines, the second
// might be a command.
std::string fromSingleByte(std::string_view bytes);

// A character that the code page doesn't have becomes a question mark; a byte that is no character
// stays. A zero character, which would end the text, is left out.
std::string toSingleByte(std::string_view text);

// The number that at most eight bytes stand for, the lowest byte first.
std::uint64_t littleEndian(std::string_view bytes);

} // namespace larkspin
