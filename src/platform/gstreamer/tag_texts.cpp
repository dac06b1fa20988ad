#include "platform/gstreamer/tag_texts.h"

#include "platform/player/player_messages.h"

#include <utility>

namespace larkspin {

void fillIn(std::string& tag, std::string_view text) {
    if (tag.empty())
        tag = text.substr(0, longestTag);
}

SongTags tagsIn(GstElement* playbin) {
    SongTags tags;
    GstTagList* told = nullptr;
    constexpr int firstStream = 0;
    g_signal_emit_by_name(playbin, "get-audio-tags", firstStream, &told);
    if (!told)
        return tags;
    const GstItemRef<GstTagList> list(told);
    for (const auto& [name, tag] : {std::pair(GST_TAG_TITLE, &tags.title),
                                    {GST_TAG_ARTIST, &tags.artist},
                                    {GST_TAG_ALBUM, &tags.album}}) {
        gchar* text = nullptr;
        if (!gst_tag_list_get_string(list.get(), name, &text))
            continue;
        fillIn(*tag, text);
        g_free(text);
    }
    return tags;
}

} // namespace larkspin
