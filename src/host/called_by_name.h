// Whether a line calls somebody by his name.
#pragma once

#include <string_view>

namespace larkspin {

// The name stands in the plain text as a word of its own, whatever its case. Empty names call
// nobody.
bool callsByName(std::string_view text, std::string_view name);

} // namespace larkspin
