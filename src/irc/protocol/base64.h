// Bytes as text in base64, and back.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace larkspin {

std::string base64(std::string_view bytes);

// Nothing for a text that no bytes are written as.
std::optional<std::string> fromBase64(std::string_view text);

} // namespace larkspin
