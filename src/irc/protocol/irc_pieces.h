// Long texts in pieces that a line of the protocol can hold.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

// Pieces of at most that many bytes, none of them empty, split where words end, or where there is
// no such place between characters. The blank where it is split is left out. What `ircCodes` has
// written and still holds where a piece begins stands in front of it. Takes time in proportion to
// the text. At most `mostPieces`; what is left after these is dropped.
std::vector<std::string> ircPieces(std::string_view codes, std::size_t longest);

inline constexpr std::size_t mostPieces = 64;

} // namespace larkspin
