// Colours that others choose for what they say, made such that they can be read where they stand.
// A colour is 0xRRGGBB.
#pragma once

#include <cstdint>

namespace larkspin {

// The colour, or one like it that differs enough from the ground to be read there.
std::uint32_t readableColor(std::uint32_t color, std::uint32_t ground);

// One between two colours, by the share of the second.
std::uint32_t mixedColor(std::uint32_t first, std::uint32_t second, double share);

// Of what calls the owner; and the share of the ground in what is told beside the rest.
inline constexpr std::uint32_t calling = 0xFFB84D;
inline constexpr double dimTextShare = 0.35;

} // namespace larkspin
