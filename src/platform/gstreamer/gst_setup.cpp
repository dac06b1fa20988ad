#include "platform/gstreamer/gst_setup.h"

#include <filesystem>
#include <string_view>

namespace larkspin {

namespace {

void setRank(const char* name, guint rank) {
    GstPluginFeature* const feature = gst_registry_lookup_feature(gst_registry_get(), name);
    if (!feature)
        return;
    gst_plugin_feature_set_rank(feature, rank);
    gst_object_unref(feature);
}

// The libav plug-in costs 35 MB of memory from its first use on. It is wanted as a decoder,
// but not to have a look at each file that nobody knows.
void dropTypeFinders(const char* plugin) {
    GstRegistry* const registry = gst_registry_get();
    GList* const features = gst_registry_get_feature_list_by_plugin(registry, plugin);
    for (GList* at = features; at; at = at->next)
        if (GST_IS_TYPE_FIND_FACTORY(at->data))
            gst_registry_remove_feature(registry, GST_PLUGIN_FEATURE(at->data));
    gst_plugin_feature_list_free(features);
}

void chooseDecoders() {
    setRank("mpg123audiodec", GST_RANK_PRIMARY + 1);
    setRank("wildmididec", GST_RANK_NONE); // fluiddec is for MIDI; this one needs patches
    dropTypeFinders("libav");
}

// Left to itself, fluiddec takes the first soundfont of the directory, which may be one that
// fills hundreds of megabytes.
void chooseSoundfont(GstElement* fluiddec) {
    for (const char* path :
         {"/usr/share/sounds/sf2/TimGM6mb.sf2", "/usr/share/sounds/sf2/default-GM.sf2"}) {
        std::error_code error;
        if (std::filesystem::is_regular_file(path, error)) {
            g_object_set(fluiddec, "soundfont", path, nullptr);
            return;
        }
    }
}

// midiparse can seek, and play at any rate, but denies it.
GstPadProbeReturn tellSeekable(GstPad*, GstPadProbeInfo* info, gpointer) {
    GstQuery* const query = GST_PAD_PROBE_INFO_QUERY(info);
    if (GST_QUERY_TYPE(query) != GST_QUERY_SEEKING)
        return GST_PAD_PROBE_OK;
    gst_query_set_seeking(query, GST_FORMAT_TIME, TRUE, 0, -1);
    return GST_PAD_PROBE_HANDLED;
}

void setUpMidi(GstElement*, GstElement* element, gpointer) {
    const GstElementFactory* const factory = gst_element_get_factory(element);
    const std::string_view name = factory ? GST_OBJECT_NAME(factory) : "";
    if (name == "fluiddec") {
        chooseSoundfont(element);
    } else if (name == "midiparse") {
        const GstRef<GstPad> pad(gst_element_get_static_pad(element, "src"));
        gst_pad_add_probe(pad.get(), GST_PAD_PROBE_TYPE_QUERY_UPSTREAM, tellSeekable, nullptr,
                          nullptr);
    }
}

} // namespace

bool startGStreamer() {
    if (!gst_init_check(nullptr, nullptr, nullptr))
        return false;
    chooseDecoders();
    return true;
}

GstRef<GstPlay> makePlay() {
    // GstPlay itself would end the process.
    GstElementFactory* const playbin = gst_element_factory_find("playbin");
    if (!playbin)
        return nullptr;
    gst_object_unref(playbin);
    GstRef<GstPlay> play(gst_play_new(nullptr));
    GstStructure* const config = gst_play_get_config(play.get());
    gst_play_config_set_position_update_interval(config, 0);
    gst_play_set_config(play.get(), config);
    gst_play_set_video_track_enabled(play.get(), FALSE);
    gst_play_set_subtitle_track_enabled(play.get(), FALSE);
    gst_play_set_visualization_enabled(play.get(), FALSE);
    const GstRef<GstElement> pipeline(gst_play_get_pipeline(play.get()));
    g_signal_connect(pipeline.get(), "element-setup", G_CALLBACK(setUpMidi), nullptr);
    return play;
}

void renewTempoFilter(GstElement* pipeline) {
    if (GstElement* const filter = gst_element_factory_make("scaletempo", nullptr))
        g_object_set(pipeline, "audio-filter", filter, nullptr);
}

} // namespace larkspin
