#include "platform/gstreamer/message_faults.h"

#include <memory>
#include <string_view>

namespace larkspin {

namespace {

using namespace std::string_view_literals;

// A file that GStreamer knows, but has nothing to read it with here. That may be a picture.
SongFault faultOfMissing(const GstStructure* missing) {
    GstCaps* found = nullptr;
    if (!gst_structure_get(missing, "detail", GST_TYPE_CAPS, &found, nullptr))
        return SongFault::noDecoder; // a part of the way to the output
    const GstItemRef<GstCaps> caps(found);
    const std::string_view type = gst_structure_get_name(gst_caps_get_structure(caps.get(), 0));
    const bool isMedia = type.starts_with("audio/") || type.starts_with("video/");
    return isMedia ? SongFault::noDecoder : SongFault::noMedia;
}

} // namespace

SongFault faultAfter(GstMessage* message, SongFault soFar) {
    if (GST_MESSAGE_TYPE(message) == GST_MESSAGE_ELEMENT)
        return gst_message_has_name(message, "missing-plugin")
                   ? faultOfMissing(gst_message_get_structure(message))
                   : soFar;
    GError* told = nullptr;
    gst_message_parse_error(message, &told, nullptr);
    const std::unique_ptr<GError, void (*)(GError*)> error(told, g_error_free);
    const auto is = [&](GQuark domain, gint code) {
        return g_error_matches(error.get(), domain, code);
    };
    const bool isMissing = is(GST_CORE_ERROR, GST_CORE_ERROR_MISSING_PLUGIN),
               isText = is(GST_STREAM_ERROR, GST_STREAM_ERROR_WRONG_TYPE) &&
                        std::string_view(GST_MESSAGE_SRC_NAME(message)).starts_with("decodebin"),
               isUnknown = is(GST_STREAM_ERROR, GST_STREAM_ERROR_TYPE_NOT_FOUND) &&
                           GST_MESSAGE_SRC_NAME(message) == "typefind"sv;
    return isMissing ? soFar : isText || isUnknown ? SongFault::noMedia : SongFault::damaged;
}

} // namespace larkspin
