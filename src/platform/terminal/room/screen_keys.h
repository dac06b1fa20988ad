// What the keys do on a terminal's screen, told by "/keys", since nothing on it has room for that.
#pragma once

#include "host/slash_words.h"

namespace larkspin {

SlashWord keysWord(SlashWords::Tell tell);

// How the evening ends, told to whoever has tried by Ctrl-C.
inline constexpr const char* howToLeave =
    "/quit ends larkspin, as Ctrl-D in an empty line does; F1 tells of all words, /keys of the keys";

} // namespace larkspin
