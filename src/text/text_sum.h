// A number for a text, always the same: what is kept by it, or seen, stays so from run to run.
#pragma once

#include <cstdint>
#include <string_view>

namespace larkspin {

std::uint64_t textSum(std::string_view text);

} // namespace larkspin
