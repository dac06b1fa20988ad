// A colour for the name of each who speaks, so that an eye finds his lines among others'.
#pragma once

#include <cstdint>
#include <string_view>

namespace larkspin {

// 0xRRGGBB, the same one whenever he speaks, however his name is written. It must still be made
// readable where it stands.
std::uint32_t nameColor(std::string_view name);

} // namespace larkspin
