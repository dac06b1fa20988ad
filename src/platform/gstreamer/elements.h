// Which of GStreamer's elements exist for this process. Songs come from strangers: what isn't
// needed for the media types can't be reached by any file.
#pragma once

namespace larkspin {

// Brings GStreamer up with those few; may take a second at the very first time.
void startGStreamer();

} // namespace larkspin
