// The bytes that a terminal sends, taken apart into keys: a character, a control character, or the
// sequence that opens with an escape and stands for a key like an arrow.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace larkspin {

// How many bytes the first key takes; 0 while its rest hasn't come. The bytes aren't empty.
std::size_t keyLength(std::string_view bytes);

// How many bytes in front are characters to be typed as they are, and no key that does something.
std::size_t plainLength(std::string_view bytes);

// Invalid bytes come out as U+FFFD.
std::wstring wideText(std::string_view bytes);

} // namespace larkspin
