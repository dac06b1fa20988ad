// What the owner may enter for a keyword and every client knows.
#pragma once

#include <string_view>

namespace larkspin {

// The address of a private room, before its name.
inline constexpr std::string_view privateRoomAddress = "aol://2719:2-2-";

} // namespace larkspin
