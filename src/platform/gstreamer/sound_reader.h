// A song that is decoded here and not by GStreamer, whose own readers of such files spin for
// ever on damaged ones, or bring several times the memory along.
#pragma once

#include "platform/gstreamer/song_file.h"
#include "platform/player/song_fault.h"
#include "playback/song_tags.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace larkspin {

struct SoundFormat {
    int rate = 0;           // frames a second
    int channels = 0;       // one to eight
    std::uint64_t mask = 0; // which ones, for more than two: bits as WAV files have them

    bool operator==(const SoundFormat&) const = default;
};

// Packed sound needs what came before it to sound right, up to this many seconds (Opus: 0.08).
inline constexpr double runUp = 0.1;

class SoundReader {
public:
    virtual ~SoundReader() = default;

    virtual SoundFormat format() const = 0; // of what was read last, or is read first
    virtual double duration() const = 0;    // seconds; 0 when only the end tells it

    // Appends samples, a frame's channels in turn, from where the last call or `seek` ended: a
    // tenth of a second or more, less before the format changes, or nothing at the song's end.
    virtual void read(std::vector<float>& samples) = 0;
    virtual void seek(double seconds) = 0;
};

struct OpenedSong {
    std::unique_ptr<SoundReader> reader;
    SongFault fault = SongFault::unknown; // why there is none
    SongTags tags = {};
};

} // namespace larkspin
