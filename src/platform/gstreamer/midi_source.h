// Feeds a playbin the sound of a MIDI song, as decoded sound that it can seek in. GStreamer's
// own reader of such files spins for ever on damaged ones.
#pragma once

#include "platform/gstreamer/gst_ref.h"
#include "platform/gstreamer/synthesizer.h"

#include <memory>
#include <string>

namespace larkspin {

class MidiSource {
public:
    static constexpr const char* uri = "appsrc://"; // under which a playbin asks for its source

    bool load(const std::string& path); // false when it can't be played
    void connect(GstElement* source);   // an appsrc that the playbin has made

private:
    static void feed(GstElement* source, guint, gpointer self);
    static gboolean move(GstElement*, guint64 time, gpointer self);
    void push(GstElement* source);
    void render(std::int16_t* frames, int count);

    std::unique_ptr<Synthesizer> synthesizer_; // from the first song on
    MidiSong song_;
    std::size_t next_ = 0; // event
    std::int64_t frame_ = 0;
    std::int64_t end_ = 0;
};

} // namespace larkspin
