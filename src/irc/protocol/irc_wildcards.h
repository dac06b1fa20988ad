// Masks as IRC writes them: `*` is any run of characters, `?` any single byte.
#pragma once

#include <string_view>

namespace larkspin {

// Whether the whole text fits. Case counts; callers fold. Takes time in proportion to the product
// of the lengths at most.
bool fitsIrcMask(std::string_view text, std::string_view mask);

} // namespace larkspin
