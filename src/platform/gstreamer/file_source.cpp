#include "platform/gstreamer/file_source.h"

#include <vector>

namespace larkspin {

void FileSource::connect(GstElement* source) {
    g_object_set(source, "size", static_cast<gint64>(file_.size()), nullptr);
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
    std::vector<char> bytes(size);
    bytes.resize(file_.read(place_, bytes));
    // The stream ends at the file's end, and likewise where the file can't be read any more.
    if (bytes.empty()) {
        g_signal_emit_by_name(source, "end-of-stream", &result);
        return;
    }
    const GstItemRef<GstBuffer> buffer(gst_buffer_new_memdup(bytes.data(), bytes.size()));
    place_ += bytes.size();
    g_signal_emit_by_name(source, "push-buffer", buffer.get(), &result);
}

} // namespace larkspin
