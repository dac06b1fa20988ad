// Account and password as SASL PLAIN puts them, in the lines of IRC.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

// What AUTHENTICATE has after it, line by line: base64 of at most 400 bytes. The last one is
// shorter than that, and "+" where nothing is left for it.
std::vector<std::string> saslPlainLines(std::string_view account, std::string_view password);

} // namespace larkspin
