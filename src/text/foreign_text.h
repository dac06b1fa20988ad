// Text from elsewhere that doesn't say how it is written: UTF-8, or else CP1252, which holds
// Latin-1.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

// The text in UTF-8. What isn't UTF-8 as a whole is read as CP1252, but for a text in UTF-8 that
// was cut in the middle of its last character. Texts in ASCII read the same either way.
std::string asUtf8(std::string_view bytes);

} // namespace larkspin
