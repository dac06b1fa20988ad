// Songs that are decoded by FFmpeg's libraries: Windows Media Audio, WAV files with packed samples,
// FLAC, Ogg, MPEG 4 and what else is known by its kind.
#pragma once

#include "platform/gstreamer/song_kind.h"
#include "platform/gstreamer/sound_reader.h"

namespace larkspin {

// The bytes of a file, all or some of them, that make a song.
struct SongPart {
    const SongFile& file; // which stays open for as long
    std::uint64_t start = 0, size = file.size();
};

OpenedSong openWithLibav(const SongPart& part, SongKind kind);

} // namespace larkspin
