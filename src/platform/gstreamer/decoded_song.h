// Opens a song that is decoded here, by FFmpeg's libraries: as a whole, or in parts where they
// would tell its length and its places wrong.
#pragma once

#include "platform/gstreamer/song_kind.h"
#include "platform/gstreamer/sound_reader.h"

namespace larkspin {

// Nothing when it can't be played. The file must stay open for as long.
std::unique_ptr<SoundReader> openDecoded(const SongFile& file, SongKind kind);

} // namespace larkspin
