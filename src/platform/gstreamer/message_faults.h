// What GStreamer's messages mean for the song that they are about.
#pragma once

#include "platform/gstreamer/gst_ref.h"
#include "platform/player/song_fault.h"

namespace larkspin {

// After an error, or a word that something is missing; the one known so far where that tells no
// more.
SongFault faultAfter(GstMessage* message, SongFault soFar);

} // namespace larkspin
