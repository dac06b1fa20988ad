#include "platform/gstreamer/audio_output.h"

#include <cstring>
#include <utility>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

constexpr const char* outputName = "larkspin-output";
constexpr const char* outputInPaths = "/GstBin:larkspin-output/";
// A program that runs for weeks finds the device that was plugged in meanwhile.
constexpr auto retryInterval = 60s;

// The process wakes up once for each of these.
constexpr const char* chunkSeconds = "1/5";
constexpr gint64 deviceBuffer = 300000, devicePeriod = 100000; // microseconds

void setIfKnown(GstElement* element, const char* name, gint64 value) {
    if (g_object_class_find_property(G_OBJECT_GET_CLASS(element), name))
        g_object_set(element, name, value, nullptr);
}

// The first sink that can open its device, already open; null without one.
GstElement* openDevice() {
    for (const char* name : {"pulsesink", "pipewiresink", "alsasink"}) {
        GstElement* const sink = gst_element_factory_make(name, nullptr);
        if (!sink)
            continue;
        setIfKnown(sink, "buffer-time", deviceBuffer);
        setIfKnown(sink, "latency-time", devicePeriod);
        if (gst_element_set_state(sink, GST_STATE_READY) == GST_STATE_CHANGE_SUCCESS)
            return sink;
        gst_element_set_state(sink, GST_STATE_NULL);
        gst_object_unref(gst_object_ref_sink(sink));
    }
    return nullptr;
}

// Decoders give small buffers. Larger ones at the output let all threads sleep longer.
GstElement* inLargeChunks(GstElement* sink) {
    GstElement* const bin = gst_bin_new(outputName);
    gst_bin_add(GST_BIN(bin), sink);
    GstElement* first = sink;
    if (GstElement* const chunks = gst_element_factory_make("audiobuffersplit", nullptr)) {
        gst_util_set_object_arg(G_OBJECT(chunks), "output-buffer-duration", chunkSeconds);
        gst_bin_add(GST_BIN(bin), chunks);
        gst_element_link(chunks, sink);
        first = chunks;
    }
    const GstRef<GstPad> pad(gst_element_get_static_pad(first, "sink"));
    gst_element_add_pad(bin, gst_ghost_pad_new("sink", pad.get()));
    return bin;
}

} // namespace

AudioOutput::AudioOutput(std::string description) : description_(std::move(description)) {}

void AudioOutput::attach(GstElement* pipeline) {
    const auto now = std::chrono::steady_clock::now();
    if (attached_ && (!silent_ || now - triedAt_ < retryInterval))
        return;
    triedAt_ = now;
    GstElement* sink = openOutput();
    if (!sink && attached_)
        return;
    attached_ = true;
    silent_ = !sink;
    if (silent_)
        sink = silence();
    g_object_set(pipeline, "audio-sink", inLargeChunks(sink), nullptr);
}

void AudioOutput::lose() {
    attached_ = false;
    lost_ = true;
}

bool AudioOutput::isNamedIn(const char* errorText) {
    return errorText && std::strstr(errorText, outputInPaths);
}

// Null when there is none. A device that was lost may be back, or there is another one.
GstElement* AudioOutput::openOutput() const {
    if (description_.empty())
        return openDevice();
    if (lost_)
        return nullptr;
    return gst_parse_bin_from_description_full(description_.c_str(), TRUE, nullptr,
                                               GST_PARSE_FLAG_FATAL_ERRORS, nullptr);
}

GstElement* AudioOutput::silence() {
    GstElement* const sink = gst_element_factory_make("fakesink", nullptr);
    g_object_set(sink, "sync", TRUE, nullptr);
    return sink;
}

} // namespace larkspin
