// Brings GStreamer up for songs: which of its decoders are taken, and a GstPlay that does
// nothing but sound.
#pragma once

#include "platform/gstreamer/player_link.h"

namespace larkspin {

bool startGStreamer();      // false when it can't be used; may take a second at the very first time
GstRef<GstPlay> makePlay(); // empty when GStreamer lacks the parts for it

// Has the next song's rate kept by a filter of its own: from one song to the next, it reads
// behind its freed buffers.
void renewTempoFilter(GstElement* pipeline);

} // namespace larkspin
