#include "platform/gstreamer/midi_source.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <utility>

namespace larkspin {

namespace {

constexpr std::size_t largestFile = 16 << 20;
constexpr int rate = Synthesizer::sampleRate;
constexpr int chunk = rate / 5; // frames: the process wakes up once for each
constexpr std::size_t frameBytes = 2 * sizeof(std::int16_t);

std::string fileContents(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string contents(largestFile, '\0');
    file.read(contents.data(), static_cast<std::streamsize>(contents.size()));
    contents.resize(static_cast<std::size_t>(file.gcount()));
    return contents;
}

std::int64_t frameAt(double seconds) {
    return std::llround(seconds * rate);
}

guint64 timeOf(std::int64_t frame) {
    return gst_util_uint64_scale_int(static_cast<guint64>(frame), GST_SECOND, rate);
}

// Of the messages before a position, these sound no more.
bool isNote(const MidiEvent& event) {
    return event.bytes[0] < 0xB0;
}

} // namespace

bool MidiSource::load(const std::string& path) {
    auto song = readMidi(fileContents(path));
    if (!song)
        return false;
    if (!synthesizer_)
        synthesizer_ = Synthesizer::start();
    if (!synthesizer_)
        return false;
    song_ = std::move(*song);
    end_ = std::max<std::int64_t>(frameAt(song_.duration), 1);
    move(nullptr, 0, this);
    return true;
}

void MidiSource::connect(GstElement* source) {
    GstCaps* const caps = gst_caps_new_simple("audio/x-raw", "format", G_TYPE_STRING, "S16LE",
                                              "layout", G_TYPE_STRING, "interleaved", "rate",
                                              G_TYPE_INT, rate, "channels", G_TYPE_INT, 2, nullptr);
    g_object_set(source, "caps", caps, "duration", timeOf(end_), nullptr);
    gst_caps_unref(caps);
    gst_util_set_object_arg(G_OBJECT(source), "format", "time");
    gst_util_set_object_arg(G_OBJECT(source), "stream-type", "seekable");
    g_signal_connect(source, "need-data", G_CALLBACK(feed), this);
    g_signal_connect(source, "seek-data", G_CALLBACK(move), this);
}

// On the source's thread, which stands still while it is moved.
void MidiSource::feed(GstElement* source, guint, gpointer self) {
    static_cast<MidiSource*>(self)->push(source);
}

// What was set on the way there holds: instruments, loudness, bends.
gboolean MidiSource::move(GstElement*, guint64 time, gpointer self) {
    MidiSource& source = *static_cast<MidiSource*>(self);
    source.synthesizer_->reset();
    source.frame_ = std::min(frameAt(seconds(static_cast<gint64>(time))), source.end_);
    const auto& events = source.song_.events;
    for (source.next_ = 0; source.next_ < events.size(); ++source.next_) {
        const MidiEvent& event = events[source.next_];
        if (frameAt(event.seconds) >= source.frame_)
            break;
        if (!isNote(event))
            source.synthesizer_->send(event, source.song_);
    }
    return TRUE;
}

void MidiSource::push(GstElement* source) {
    GstFlowReturn result{};
    if (frame_ >= end_) {
        g_signal_emit_by_name(source, "end-of-stream", &result);
        return;
    }
    const int count = static_cast<int>(std::min<std::int64_t>(chunk, end_ - frame_));
    GstBuffer* const buffer =
        gst_buffer_new_allocate(nullptr, static_cast<gsize>(count) * frameBytes, nullptr);
    GST_BUFFER_PTS(buffer) = timeOf(frame_);
    GstMapInfo map;
    if (gst_buffer_map(buffer, &map, GST_MAP_WRITE)) {
        render(reinterpret_cast<std::int16_t*>(map.data), count);
        gst_buffer_unmap(buffer, &map);
    }
    GST_BUFFER_DURATION(buffer) = timeOf(frame_) - GST_BUFFER_PTS(buffer);
    g_signal_emit_by_name(source, "push-buffer", buffer, &result);
    gst_buffer_unref(buffer);
}

// From message to message.
void MidiSource::render(std::int16_t* frames, int count) {
    const std::int64_t until = frame_ + count;
    while (frame_ < until) {
        for (; next_ < song_.events.size(); ++next_) {
            const MidiEvent& event = song_.events[next_];
            if (frameAt(event.seconds) > frame_)
                break;
            synthesizer_->send(event, song_);
        }
        const std::int64_t stop = next_ < song_.events.size()
                                      ? std::min(until, frameAt(song_.events[next_].seconds))
                                      : until;
        const int span = static_cast<int>(stop - frame_);
        synthesizer_->render(frames, span);
        frames += 2 * span;
        frame_ = stop;
    }
}

} // namespace larkspin
