// What of a line is a secret: passwords that are given to services and servers, and the keys of
// rooms. Wherever a line is kept or shown again, it is without them.
#pragma once

#include <string>
#include <string_view>

namespace larkspin {

// Stands in place of what isn't shown.
inline constexpr std::string_view secretMask = "****";

// A line as it is typed, wherever the owner is.
std::string typedWithoutSecrets(std::string_view line);

// What is said to somebody: only services are told secrets.
std::string saidWithoutSecrets(std::string_view to, std::string_view text);

// A line of the protocol, as "MODE #den +k sesame".
std::string protocolWithoutSecrets(std::string_view line);

} // namespace larkspin
