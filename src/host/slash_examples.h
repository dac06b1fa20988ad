// An example for each word with a slash that something is typed after.
#pragma once

#include <string_view>

namespace larkspin {

// What stands after the word; empty for one that has none.
std::string_view exampleOf(std::string_view word);

} // namespace larkspin
