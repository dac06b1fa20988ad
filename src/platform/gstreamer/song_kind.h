// What kind of file a song is, told by its first bytes, whatever its name.
#pragma once

#include "platform/gstreamer/song_file.h"

namespace larkspin {

enum class SongKind {
    other, // for GStreamer, if it knows it
    midi,
    asf,
    packedWav, // with samples that GStreamer's own parts can't unpack
    flac,
    ogg,
    mp4,
    adts, // plain AAC
    ape,
    wavpack,
    musepack7,
    musepack8,
    aiff
};

// Some kinds may have an ID3v2 tag in front, which is passed over.
SongKind kindOf(const SongFile& file);

// Where the song's own bytes begin, after such tags.
std::uint64_t afterTags(const SongFile& file);

} // namespace larkspin
