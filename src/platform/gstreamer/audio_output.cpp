#include "platform/gstreamer/audio_output.h"

#include "platform/gstreamer/large_chunks.h"

#include <cstdlib>
#include <utility>

namespace larkspin {

namespace {

// The process wakes up once for each period, so long periods let it sleep.
constexpr gint64 deviceBuffer = 300000, devicePeriod = 100000; // microseconds

template <typename Value> void setIfKnown(GstElement* element, const char* name, Value value) {
    if (g_object_class_find_property(G_OBJECT_GET_CLASS(element), name))
        g_object_set(element, name, value, nullptr);
}

constexpr const char* servers[] = {"pulsesink", "pipewiresink"};

// A sink with its device open (that is what READY means for a sink); null when there is none.
GstRef<GstElement> openSink(const char* name) {
    GstElement* const made = gst_element_factory_make(name, nullptr);
    if (!made)
        return nullptr;
    GstRef<GstElement> sink(GST_ELEMENT(gst_object_ref_sink(made)));
    setIfKnown(made, "buffer-time", deviceBuffer);
    setIfKnown(made, "latency-time", devicePeriod);
    setIfKnown(made, "client-name", "larkspin");
    if (gst_element_set_state(made, GST_STATE_READY) == GST_STATE_CHANGE_SUCCESS)
        return sink;
    gst_element_set_state(made, GST_STATE_NULL);
    return nullptr;
}

} // namespace

// All sinks of a sound server share its connection. A sink that is never used keeps it open, since
// no other one can be made once this process is confined.
AudioOutput::AudioOutput(std::string description) : description_(std::move(description)) {
    if (!description_.empty())
        return;
    ::setenv("PULSE_PROP_application.icon_name", "larkspin", 1);
    for (const char* server : servers) {
        connection_ = openSink(server);
        if (!connection_)
            continue;
        device_ = openSink(server);
        break;
    }
    if (!connection_)
        device_ = openSink("alsasink");
    silent_ = !device_;
}

void AudioOutput::attach(GstElement* pipeline, const std::string& title) {
    const char* valid = nullptr; // up to where, should the title have been cut within a letter
    g_utf8_validate(title.c_str(), -1, &valid);
    title_.assign(title.c_str(), valid);
    isTitleTold_ = title_.empty();
    if (attached_)
        return;
    GstElement* sink = takeSilence_ ? nullptr : openOutput();
    attached_ = true;
    silent_ = !sink;
    if (silent_)
        sink = silence();
    g_object_set(pipeline, "audio-sink", watched(sink), nullptr);
}

void AudioOutput::setLoudness(double amplitude, bool mute) {
    amplitude_ = amplitude;
    mute_ = mute;
    if (volume_)
        g_object_set(volume_.get(), "volume", amplitude_, "mute", gboolean{mute_}, nullptr);
}

void AudioOutput::lose(bool takeSilence) {
    attached_ = false;
    takeSilence_ = takeSilence;
}

bool AudioOutput::holds(GstObject* element) const {
    return bin_ && gst_object_has_as_ancestor(element, GST_OBJECT(bin_.get()));
}

// Puts the sink into a bin with what makes it loud or soft, so that a message from any part of the
// sink is known by the bin around it.
GstElement* AudioOutput::watched(GstElement* sink) {
    GstElement* const bin = gst_bin_new(nullptr);
    GstElement* const volume = gst_element_factory_make("volume", nullptr);
    gst_bin_add_many(GST_BIN(bin), volume, sink, nullptr);
    gst_element_link(volume, sink);
    volume_.reset(GST_ELEMENT(gst_object_ref(volume)));
    setLoudness(amplitude_, mute_);
    const GstRef<GstPad> pad(gst_element_get_static_pad(sink, "sink"));
    const int kinds = GST_PAD_PROBE_TYPE_BUFFER | GST_PAD_PROBE_TYPE_EVENT_DOWNSTREAM |
                      GST_PAD_PROBE_TYPE_EVENT_FLUSH;
    gst_pad_add_probe(pad.get(), static_cast<GstPadProbeType>(kinds), note, this, nullptr);
    new LargeChunks(pad.get()); // NOLINT: the pad deletes it
    const GstRef<GstPad> entry(gst_element_get_static_pad(volume, "sink"));
    gst_element_add_pad(bin, gst_ghost_pad_new("sink", entry.get()));
    bin_.reset(GST_ELEMENT(gst_object_ref_sink(bin)));
    return bin;
}

// Runs on GStreamer's threads.
GstPadProbeReturn AudioOutput::note(GstPad* pad, GstPadProbeInfo* info, gpointer self) {
    auto& output = *static_cast<AudioOutput*>(self);
    if (GST_PAD_PROBE_INFO_TYPE(info) & GST_PAD_PROBE_TYPE_BUFFER) {
        output.sounded_ = true;
        if (!std::exchange(output.isTitleTold_, true))
            output.tellTitle(pad);
        return GST_PAD_PROBE_OK;
    }
    const GstEventType event = GST_EVENT_TYPE(GST_PAD_PROBE_INFO_EVENT(info));
    if (event == GST_EVENT_TAG) // the file's own: hidden from the device
        return output.tellsTitle_ ? GST_PAD_PROBE_OK : GST_PAD_PROBE_DROP;
    output.atEnd_ = event == GST_EVENT_EOS;
    return GST_PAD_PROBE_OK;
}

// Ahead of the song's first samples, on the thread that brings them: the device has a stream then.
void AudioOutput::tellTitle(GstPad* pad) {
    tellsTitle_ = true;
    gst_pad_send_event(pad,
                       gst_event_new_tag(gst_tag_list_new(GST_TAG_TITLE, title_.c_str(), nullptr)));
    tellsTitle_ = false;
}

// A sink; null when there is none. A device that was lost may be back, or there may be another one.
GstElement* AudioOutput::openOutput() {
    if (description_.empty()) {
        if (!device_)
            device_ =
                openSink(connection_ ? GST_OBJECT_NAME(gst_element_get_factory(connection_.get()))
                                     : "alsasink");
        return device_.release();
    }
    return gst_parse_bin_from_description_full(description_.c_str(), TRUE, nullptr,
                                               GST_PARSE_FLAG_FATAL_ERRORS, nullptr);
}

GstElement* AudioOutput::silence() {
    GstElement* const sink = gst_element_factory_make("fakesink", nullptr);
    // Takes as long as the song would sound.
    g_object_set(sink, "sync", TRUE, nullptr);
    return sink;
}

} // namespace larkspin
