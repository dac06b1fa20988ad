// The time at which something was said, as servers write it: "2011-10-19T16:40:51.620Z".
#pragma once

#include <ctime>
#include <optional>
#include <string>
#include <string_view>

namespace larkspin {

// In seconds since 1970. Nothing for what is no such time.
std::optional<std::time_t> momentOfIrc(std::string_view text);
std::string ircTime(std::time_t moment);

} // namespace larkspin
