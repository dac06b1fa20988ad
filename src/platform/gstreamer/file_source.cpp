#include "platform/gstreamer/file_source.h"

namespace larkspin {

void FileSource::connect(GstElement* source) {
    g_object_set(source, "size", static_cast<gint64>(file_.size()), nullptr);
    gst_util_set_object_arg(G_OBJECT(source), "format", "bytes");
    gst_util_set_object_arg(G_OBJECT(source), "stream-type", "random-access");
    g_signal_connect(source, "need-data", G_CALLBACK(feed), this);
    g_signal_connect(source, "seek-data", G_CALLBACK(move), this);
}

// These are called on GStreamer's reading thread, in the middle of its reading.
void FileSource::feed(GstElement* source, guint size, gpointer self) {
    static_cast<FileSource*>(self)->push(source, size);
}

gboolean FileSource::move(GstElement*, guint64 place, gpointer self) {
    static_cast<FileSource*>(self)->place_ = place;
    return TRUE;
}

void FileSource::push(GstElement* source, std::size_t size) {
    GstFlowReturn result{};
    GstBuffer* const buffer = gst_buffer_new_allocate(nullptr, size, nullptr);
    GstMapInfo map;
    std::size_t count = 0;
    if (buffer && gst_buffer_map(buffer, &map, GST_MAP_WRITE)) {
        count = file_.read(place_, {reinterpret_cast<char*>(map.data), map.size});
        gst_buffer_unmap(buffer, &map);
    }
    // The stream ends at the file's end, and likewise where the file can't be read any more.
    if (count == 0) {
        g_signal_emit_by_name(source, "end-of-stream", &result);
    } else {
        gst_buffer_set_size(buffer, static_cast<gssize>(count));
        GST_BUFFER_OFFSET(buffer) = place_;
        place_ += count;
        GST_BUFFER_OFFSET_END(buffer) = place_;
        g_signal_emit_by_name(source, "push-buffer", buffer, &result);
    }
    if (buffer)
        gst_buffer_unref(buffer);
}

} // namespace larkspin
