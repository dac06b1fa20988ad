// The two arguments of a command like `rec *, *`. What divides them is the first comma; the one
// character after it, a blank as a rule, is dropped whatever it is.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace larkspin {

struct TwoArguments {
    std::string first, second; // without blanks around them; either may be empty
};

// Nothing when there is no comma, or nothing after it.
std::optional<TwoArguments> twoArguments(std::string_view text);

} // namespace larkspin
