// Numbers of bytes, and shares of them, as one reads them: with two decimals at most, exactly
// rounded, a half to the even digit, and without trailing zeros.
#pragma once

#include <cstdint>
#include <string>

namespace larkspin {

// "<b>1.5</b> gb", in the largest of gb, mb, kb and bytes that it reaches.
std::string readable(std::uint64_t bytes);

// The part in percent of the whole, which isn't 0 and not less than the part.
std::string percentage(std::uint64_t part, std::uint64_t whole);

} // namespace larkspin
