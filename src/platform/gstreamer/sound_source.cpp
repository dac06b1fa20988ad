#include "platform/gstreamer/sound_source.h"

#include <bit>
#include <cmath>
#include <utility>

namespace larkspin {

namespace {

// The channels whose bits mean the same in GStreamer.
constexpr std::uint64_t sharedChannels = 0x1FF;

GstCaps* capsOf(const SoundFormat& format) {
    GstCaps* const caps =
        gst_caps_new_simple("audio/x-raw", "format", G_TYPE_STRING,
                            std::endian::native == std::endian::little ? "F32LE" : "F32BE",
                            "layout", G_TYPE_STRING, "interleaved", "rate", G_TYPE_INT, format.rate,
                            "channels", G_TYPE_INT, format.channels, nullptr);
    // A mask of 0 stands for channels that have no place in a room.
    const bool named = std::popcount(format.mask & sharedChannels) == format.channels;
    if (format.channels > 2)
        gst_caps_set_simple(caps, "channel-mask", GST_TYPE_BITMASK, named ? format.mask : 0,
                            nullptr);
    return caps;
}

} // namespace

GstClockTime SoundSource::timeOf(std::int64_t frame) const {
    return gst_util_uint64_scale_int(static_cast<guint64>(frame), GST_SECOND,
                                     reader_->format().rate);
}

void SoundSource::connect(GstElement* source) {
    GstCaps* const caps = capsOf(reader_->format());
    g_object_set(source, "caps", caps, nullptr);
    gst_caps_unref(caps);
    if (reader_->duration() > 0)
        g_object_set(source, "duration", static_cast<guint64>(clockTime(reader_->duration())),
                     nullptr);
    gst_util_set_object_arg(G_OBJECT(source), "format", "time");
    gst_util_set_object_arg(G_OBJECT(source), "stream-type", "seekable");
    g_signal_connect(source, "need-data", G_CALLBACK(feed), this);
    g_signal_connect(source, "seek-data", G_CALLBACK(move), this);
}

// These are called on the source's thread, so never at the same time.
void SoundSource::feed(GstElement* source, guint, gpointer self) {
    static_cast<SoundSource*>(self)->push(source);
}

gboolean SoundSource::move(GstElement*, guint64 time, gpointer self) {
    SoundSource& source = *static_cast<SoundSource*>(self);
    const double target = seconds(static_cast<gint64>(time));
    const auto frame = std::llround(target * source.reader_->format().rate);
    if (std::exchange(source.frame_, frame) != frame) // as it is at the song's begin
        source.reader_->seek(target);
    return TRUE;
}

void SoundSource::push(GstElement* source) {
    std::vector<float> samples;
    reader_->read(samples);
    GstFlowReturn result{};
    if (samples.empty()) {
        g_signal_emit_by_name(source, "end-of-stream", &result);
        return;
    }
    GstBuffer* const buffer = gst_buffer_new_memdup(samples.data(), samples.size() * sizeof(float));
    GST_BUFFER_PTS(buffer) = timeOf(frame_);
    frame_ += static_cast<std::int64_t>(samples.size()) / reader_->format().channels;
    GST_BUFFER_DURATION(buffer) = timeOf(frame_) - GST_BUFFER_PTS(buffer);
    g_signal_emit_by_name(source, "push-buffer", buffer, &result);
    gst_buffer_unref(buffer);
}

} // namespace larkspin
