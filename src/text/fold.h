// Case folding: what "without regard to case" means everywhere here. Unicode simple folding,
// so that Ä finds ä, one character for one; invalid bytes stay as they are.
//
// Names on disk may hold `" * : < > ?` and blanks that a path carries as U+F000 plus their code.
// These stand-ins fold to the plain characters, which are what the owner types. Those of `|` and
// `\` don't: rows and paths take the plain ones for separators.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

std::string foldCase(std::string_view text);

// Compare as if both were folded, without making the folded texts.
bool equalFolded(std::string_view a, std::string_view b);
bool lessFolded(std::string_view a, std::string_view b); // by folded bytes, ascending
// Below 0, 0 or above 0, as a comes before b, folds to the same, or comes behind it.
int compareFolded(std::string_view a, std::string_view b);

} // namespace larkspin
