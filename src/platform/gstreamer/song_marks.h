// Where the moments of a song stand in its file, and how long it is, for kinds of files of which
// FFmpeg's libraries know neither, or tell it wrong.
#pragma once

#include "platform/gstreamer/song_file.h"

#include <cstdint>
#include <vector>

namespace larkspin {

struct SongMarks {
    struct Mark {
        std::uint64_t place; // in the file
        double seconds;
    };
    std::vector<Mark> marks; // in their order; none when there is no song
    double duration = 0;     // seconds; 0 for unknown
};

// Plain AAC. Its frames alone tell where a moment stands, so that they are gone through once.
SongMarks adtsMarks(const SongFile& file);

// Musepack. Its places can't be trusted, so that the beginning is the only mark.
SongMarks musepackMarks(const SongFile& file);

} // namespace larkspin
