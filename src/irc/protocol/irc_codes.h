// The codes by which IRC writes how text looks, one by one. Each holds until it is taken back or
// the line ends.
#pragma once

#include "chat/markup.h"

#include <string>
#include <string_view>

namespace larkspin {

// The bytes of the code that the text begins with, and into the style what it changes; 0 where
// there is none. Of what the client's markup has no word for (backgrounds, reverse, struck through,
// monospace) nothing remains. Black and white, or nearly so, are the reader's own colour: on whose
// background they would be read is unknown, and one of the two can't be seen there.
std::size_t takeIrcCode(std::string_view text, MarkupStyle& style);

// What leads from one style to another in front of that text, by codes that all programs know: of
// the colours the nearest of the sixteen. Nothing of the text can be taken for a part of a code.
std::string ircCodesBetween(const MarkupStyle& from, const MarkupStyle& to, std::string_view text);

} // namespace larkspin
