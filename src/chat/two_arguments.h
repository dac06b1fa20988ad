// The two arguments of a command like `rec *, *`. The first comma divides them. One character after
// it, which is usually a blank, is dropped whatever it is.
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
