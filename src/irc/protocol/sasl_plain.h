// Account and password as SASL PLAIN puts them, in the lines of IRC.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

// The parameters of the AUTHENTICATE lines, in order: pieces of at most 400 bytes of base64. The
// last one must be shorter than 400 bytes, which tells the server that it is the last; if nothing
// is left for it, it is "+".
std::vector<std::string> saslPlainLines(std::string_view account, std::string_view password);

} // namespace larkspin
