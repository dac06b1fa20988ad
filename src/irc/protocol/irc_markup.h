// The client's markup and the codes by which IRC writes the same.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

// A line of the owner's or the program's, from the client's markup into IRC's codes: bold,
// underline, italics, and the nearest of the sixteen colours that all programs know, except for
// black and white (see `irc_codes.h`). Fonts have no code. Line ends and other control characters
// become blanks. Bytes that aren't UTF-8 stay.
std::string ircCodes(std::string_view markup);

// A line from the room, from IRC's codes into the client's markup. If others write something that
// would read as one of the client's tags, it is kept from being a tag (`withoutTags`). Control
// characters that aren't codes stay.
std::string markupOfIrc(std::string_view codes);

// The text without any code.
std::string withoutIrcCodes(std::string_view codes);

} // namespace larkspin
