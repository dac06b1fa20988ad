#include "platform/gstreamer/elements.h"

#include <algorithm>
#include <gst/gst.h>
#include <string_view>

namespace larkspin {

namespace {

constexpr std::string_view elements[] = {
    // what playbin is made of
    "bin", "pipeline", "playbin", "playsink", "uridecodebin", "decodebin", "streamsynchronizer",
    "typefind", "multiqueue", "queue", "queue2", "tee", "identity", "capsfilter", "input-selector",
    // where sound comes from: the song's file as it is, or what is decoded here
    "appsrc",
    // MP3 and the tags around it; WAV
    "id3demux", "apedemux", "mpegaudioparse", "mpg123audiodec", "wavparse", "alawdec", "mulawdec",
    // on the way to the output
    "audioconvert", "audioresample", "scaletempo", "volume",
    // outputs; the last two are for those that are described in words
    "pulsesink", "pipewiresink", "alsasink", "fakesink", "filesink"};

// The plugin that tells what a file is by its first bytes.
constexpr const char* typeFinders = "typefindfunctions";

bool isNeeded(GstPluginFeature* feature) {
    if (GST_IS_ELEMENT_FACTORY(feature))
        return std::find(std::begin(elements), std::end(elements), GST_OBJECT_NAME(feature)) !=
               std::end(elements);
    return g_strcmp0(gst_plugin_feature_get_plugin_name(feature), typeFinders) == 0;
}

} // namespace

void startGStreamer() {
    if (!gst_init_check(nullptr, nullptr, nullptr))
        return;
    GstRegistry* const registry = gst_registry_get();
    GList* const features =
        gst_registry_feature_filter(registry, nullptr, FALSE, nullptr); // all of them
    for (GList* at = features; at; at = at->next)
        if (GstPluginFeature* const feature = GST_PLUGIN_FEATURE(at->data); !isNeeded(feature))
            gst_registry_remove_feature(registry, feature);
    gst_plugin_feature_list_free(features);
}

} // namespace larkspin
