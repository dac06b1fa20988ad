// The client's markup and the codes by which IRC writes the same.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

// What the owner or the program says, in codes: bold, underline and italics, and the nearest of the
// sixteen colours that all programs know. Fonts have no code. Line ends and other control characters
// become blanks.
std::string ircCodes(std::string_view markup);

// What is said in the room, in the client's markup. Signs of others that would read as the client's
// tags don't: they come out with a mark that isn't seen (`text/visible.h` leaves it out).
std::string markupOfIrc(std::string_view codes);

// Without any code: what it says.
std::string withoutIrcCodes(std::string_view codes);

} // namespace larkspin
