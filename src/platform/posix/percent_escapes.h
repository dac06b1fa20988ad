// Bytes as they stand in an address.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

// Letters, digits, "-", ".", "_", "~" and what else is `plain` stay; all other bytes become "%" and
// two hexadecimal digits.
std::string percentEscaped(std::string_view text, std::string_view plain = "/");

} // namespace larkspin
