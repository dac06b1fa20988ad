// Why a song can't be played, as its process finds out. A process may be in a stranger's hands, so
// it says one of these, and the words for the owner are the program's own.
#pragma once

#include <cstdint>
#include <string>

namespace larkspin {

enum class SongFault : std::uint8_t {
    unknown,
    empty,
    unread,
    noMedia,
    noSound,
    noDecoder,
    damaged
};

// As they stand after a colon; empty where nobody knows more.
std::string wordsOf(SongFault fault);

} // namespace larkspin
