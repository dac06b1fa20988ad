// What a song says of itself, in texts of bounded length.
#pragma once

#include "platform/gstreamer/gst_ref.h"
#include "playback/song_tags.h"

#include <string>
#include <string_view>

namespace larkspin {

// The first text that is found counts. No more is kept of one than can be told of it.
void fillIn(std::string& tag, std::string_view text);

// Of the song that the playbin is ready to play, as its demuxers have read it.
SongTags tagsIn(GstElement* playbin);

} // namespace larkspin
