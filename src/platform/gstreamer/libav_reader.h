// Windows Media Audio, and WAV files with packed samples, decoded by FFmpeg's libraries. They
// are loaded by the first such song, since they take more memory than all the rest.
#pragma once

#include "platform/gstreamer/sound_reader.h"

namespace larkspin {

// Nothing when it can't be played: the libraries are missing, or the file has no such sound. It
// must stay open for as long.
std::unique_ptr<SoundReader> openWithLibav(const SongFile& file);

} // namespace larkspin
