// Marking found words in a text.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

// Replaces every occurrence of `find`, without regard to case, from left to right. An empty
// `find` occurs nowhere.
std::string highlight(std::string_view text, std::string_view find, std::string_view replacement);

} // namespace larkspin
