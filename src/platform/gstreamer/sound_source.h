// Feeds a playbin the sound of a SoundReader, in which it can seek.
#pragma once

#include "platform/gstreamer/gst_ref.h"
#include "platform/gstreamer/sound_reader.h"

namespace larkspin {

class SoundSource {
public:
    explicit SoundSource(std::unique_ptr<SoundReader> reader) : reader_(std::move(reader)) {}
    SoundSource(const SoundSource&) = delete;
    SoundSource& operator=(const SoundSource&) = delete;

    // An appsrc that the playbin has made. It must be gone before this is.
    void connect(GstElement* source);

private:
    static void feed(GstElement* source, guint, gpointer self);
    static gboolean move(GstElement*, guint64 time, gpointer self);
    void push(GstElement* source);
    void announce(GstElement* source);

    std::unique_ptr<SoundReader> reader_;
    SoundFormat format_;   // of what was pushed last
    GstClockTime now_ = 0; // when the next frame is heard
};

} // namespace larkspin
