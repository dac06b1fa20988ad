// Bytes as they stand in an address.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

// Letters, digits, "-", ".", "_", "~" and what else is `plain` stay; all other bytes become "%" and
// two hexadecimal digits.
std::string percentEscaped(std::string_view text, std::string_view plain = "/");

// The way back. What only looks like such an escape stays.
std::string percentUnescaped(std::string_view text);

} // namespace larkspin
