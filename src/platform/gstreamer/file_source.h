// Feeds a playbin the bytes of a song's file, which it may read at any place.
#pragma once

#include "platform/gstreamer/gst_ref.h"
#include "platform/gstreamer/song_file.h"

namespace larkspin {

class FileSource {
public:
    explicit FileSource(const SongFile& file) : file_(file) {}
    FileSource(const FileSource&) = delete;
    FileSource& operator=(const FileSource&) = delete;

    // An appsrc that the playbin has made. It must be gone before this is.
    void connect(GstElement* source);

private:
    static void feed(GstElement* source, guint size, gpointer self);
    static gboolean move(GstElement*, guint64 place, gpointer self);
    void push(GstElement* source, std::size_t size);

    const SongFile& file_;
    std::uint64_t place_ = 0; // to be read next
};

} // namespace larkspin
