// Case folding: what "without regard to case" means everywhere here. Unicode simple folding,
// so that Ä finds ä, one character for one; invalid bytes stay as they are.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

std::string foldCase(std::string_view text);

// Compare as if both were folded, without making the folded texts.
bool equalFolded(std::string_view a, std::string_view b);
bool lessFolded(std::string_view a, std::string_view b); // by folded bytes, ascending

} // namespace larkspin
