// Opens a song that is decoded here, by FFmpeg's libraries: as a whole, or in parts where they
// would tell its length and its places wrong.
#pragma once

#include "platform/gstreamer/song_kind.h"
#include "platform/gstreamer/sound_reader.h"

namespace larkspin {

// The file must stay open for as long.
OpenedSong openDecoded(const SongFile& file, SongKind kind);

} // namespace larkspin
