// What a song's file says of the song itself. Empty where it says nothing.
#pragma once

#include <string>

namespace larkspin {

struct SongTags {
    std::string title, artist, album;

    bool operator==(const SongTags&) const = default;
};

} // namespace larkspin
