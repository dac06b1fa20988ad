// The codes by which IRC writes how text looks, one by one. Each holds until it is taken back or
// the line ends.
#pragma once

#include "chat/markup.h"

#include <string>
#include <string_view>

namespace larkspin {

// Takes the code with which the text begins: puts into the style what it changes, and returns its
// length in bytes, 0 when there is none. Codes for which the client's markup has no word
// (backgrounds, reverse, struck through, monospace) leave nothing behind. Black and white, or
// nearly so, become the reader's own colour: his background is unknown, and one of the two can't be
// seen on it.
std::size_t takeIrcCode(std::string_view text, MarkupStyle& style);

// The codes that lead from one style to another before that text, among those that all programs
// know; a colour becomes the nearest of the sixteen. Nothing of the text can be taken for a part of
// a code.
std::string ircCodesBetween(const MarkupStyle& from, const MarkupStyle& to, std::string_view text);

} // namespace larkspin
