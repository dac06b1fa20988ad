// The client's markup and the codes by which IRC writes the same.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

// What the owner or the program says, in codes: bold, underline and italics, and the nearest of the
// sixteen colours that all programs know, but for black and white (see `irc_codes.h`). Fonts have
// no code. Line ends and other control characters become blanks. Bytes that are no UTF-8 stay.
std::string ircCodes(std::string_view markup);

// What is said in the room, in the client's markup. What others write that would read as one of the
// client's tags is kept from being one (`withoutTags`). Control characters that are no codes stay.
std::string markupOfIrc(std::string_view codes);

// The text without any code.
std::string withoutIrcCodes(std::string_view codes);

} // namespace larkspin
