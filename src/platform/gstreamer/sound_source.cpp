#include "platform/gstreamer/sound_source.h"

#include <bit>

namespace larkspin {

namespace {

// Where the channels stand in the room, as GStreamer's bits. The first nine mean the same in a mask
// that WAV files have; the two at the sides have other bits there.
constexpr std::uint64_t sharedChannels = 0x1FF, sideChannels = 0x600;

// For channels whose places aren't told, by their number. Without places they couldn't be mixed.
constexpr std::uint64_t usualPlaces[] = {0, 0, 0, 0x7, 0x33, 0x37, 0x3F, 0x13F, 0xC3F};

std::uint64_t placesOf(const SoundFormat& format) {
    const std::uint64_t places = (format.mask & sharedChannels) | (format.mask & sideChannels) << 1;
    return std::popcount(places) == format.channels ? places : usualPlaces[format.channels];
}

GstItemRef<GstCaps> capsOf(const SoundFormat& format) {
    GstItemRef<GstCaps> caps(
        gst_caps_new_simple("audio/x-raw", "format", G_TYPE_STRING,
                            std::endian::native == std::endian::little ? "F32LE" : "F32BE",
                            "layout", G_TYPE_STRING, "interleaved", "rate", G_TYPE_INT, format.rate,
                            "channels", G_TYPE_INT, format.channels, nullptr));
    if (format.channels > 2)
        gst_caps_set_simple(caps.get(), "channel-mask", GST_TYPE_BITMASK, placesOf(format),
                            nullptr);
    return caps;
}

} // namespace

// Tells what comes next: the song's format may change within it.
void SoundSource::announce(GstElement* source) {
    format_ = reader_->format();
    g_object_set(source, "caps", capsOf(format_).get(), nullptr);
}

void SoundSource::connect(GstElement* source) {
    announce(source);
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
    if (time != source.now_) // as it is at the song's begin
        source.reader_->seek(target);
    source.now_ = time;
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
    if (reader_->format() != format_)
        announce(source);
    const GstItemRef<GstBuffer> buffer(
        gst_buffer_new_memdup(samples.data(), samples.size() * sizeof(float)));
    const guint64 frames = samples.size() / static_cast<std::size_t>(format_.channels);
    GST_BUFFER_PTS(buffer.get()) = now_;
    GST_BUFFER_DURATION(buffer.get()) = gst_util_uint64_scale_int(frames, GST_SECOND, format_.rate);
    now_ += GST_BUFFER_DURATION(buffer.get());
    g_signal_emit_by_name(source, "push-buffer", buffer.get(), &result);
}

} // namespace larkspin
