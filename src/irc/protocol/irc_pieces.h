// Long texts in pieces that a line of the protocol can hold.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

// Pieces of at most that many bytes, none of them empty. The text is split where a word ends, or,
// when there is no such place, between characters; the blank at which it is split is left out. A
// piece begins with the codes of `ircCodes` that still hold there. Takes time in proportion to the
// text. What is left after `mostPieces` pieces is dropped.
std::vector<std::string> ircPieces(std::string_view codes, std::size_t longest);

inline constexpr std::size_t mostPieces = 64;

} // namespace larkspin
