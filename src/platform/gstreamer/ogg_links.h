// The links of a chained Ogg file: songs that were put one after the other into one file, as a
// radio station's recording has them.
#pragma once

#include "platform/gstreamer/song_file.h"

#include <vector>

namespace larkspin {

struct OggLink {
    std::uint64_t start = 0, size = 0; // in the file
};

// In their order. Nearly all files are one link, which a look at both ends of the file tells. Only
// others are gone through page by page.
std::vector<OggLink> oggLinks(const SongFile& file);

} // namespace larkspin
