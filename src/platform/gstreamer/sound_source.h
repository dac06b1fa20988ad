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
    GstClockTime now() const;

    std::unique_ptr<SoundReader> reader_;
    SoundFormat format_{.rate = 1}; // of what was pushed last
    GstClockTime begin_ = 0;        // when that format began
    std::int64_t frame_ = 0;        // of those since then, to be read next
};

} // namespace larkspin
