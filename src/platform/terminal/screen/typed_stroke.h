// The first stroke of the bytes that a terminal sends.
#pragma once

#include "platform/terminal/screen/strokes.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace larkspin {

// Opens and ends a paste.
inline constexpr std::string_view pasteBegins = "\x1b[200~", pasteEnds = "\x1b[201~";

struct TypedStroke {
    std::size_t length = 0;       // bytes; 0 while its rest hasn't come
    std::optional<Stroke> stroke; // nothing for what means nothing
};

// The bytes aren't empty. If they are whole, nothing more of them is going to come.
TypedStroke firstStroke(std::string_view bytes, bool areWhole);

} // namespace larkspin
