// Case folding: what "without regard to case" means everywhere here. Unicode simple folding, so
// that Ä finds ä, in one spelling of what is canonically the same, so that a letter with an accent
// after it finds the letter that has it. Invalid bytes stay as they are.
//
// Stand-ins fold to what is seen of them, which is what the owner types. Those of `|` and `\`
// don't: rows and paths take the plain ones for separators. Names alone are searched by `foldName`.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

std::string foldCase(std::string_view text);

// What the owner types to find a name: folded, with the stand-ins that a folded name holds.
std::string foldName(std::string_view typed);

// Compare as if both were folded, without making the folded texts.
bool equalFolded(std::string_view a, std::string_view b);
bool lessFolded(std::string_view a, std::string_view b); // by folded bytes, ascending
// Below 0, 0 or above 0, as a comes before b, folds to the same, or comes after it.
int compareFolded(std::string_view a, std::string_view b);

} // namespace larkspin
