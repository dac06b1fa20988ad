#include "platform/dbus/mpris_values.h"

#include "platform/posix/drive_paths.h"
#include "platform/posix/file_addresses.h"
#include "shell/media_types.h"
#include "text/stand_ins.h"
#include "text/utf8.h"

#include <cstdint>

namespace larkspin {

namespace {

constexpr const char* noSong = "/org/mpris/MediaPlayer2/TrackList/NoTrack";

// The text as the owner sees it, and in valid UTF-8, since the bus takes nothing else.
std::string validText(std::string_view stored) {
    const std::string seen = asSeen(stored);
    std::string valid;
    std::string_view text = seen;
    while (!text.empty()) {
        const Character next = firstCharacter(text);
        if (next.valid)
            valid += text.substr(0, next.length);
        else
            appendCharacter(valid, U'\uFFFD');
        text.remove_prefix(next.length);
    }
    return valid;
}

} // namespace

const char* mprisName(RemoteView::Status status) {
    switch (status) {
    case RemoteView::Status::playing:
        return "Playing";
    case RemoteView::Status::paused:
        return "Paused";
    case RemoteView::Status::stopped:
        break;
    }
    return "Stopped";
}

const char* mprisName(RemoteView::Loop loop) {
    switch (loop) {
    case RemoteView::Loop::song:
        return "Track";
    case RemoteView::Loop::list:
        return "Playlist";
    case RemoteView::Loop::none:
        break;
    }
    return "None";
}

std::optional<RemoteView::Loop> mprisLoop(std::string_view name) {
    for (const auto loop : {RemoteView::Loop::none, RemoteView::Loop::song, RemoteView::Loop::list})
        if (name == mprisName(loop))
            return loop;
    return std::nullopt;
}

int appendMediaTypes(sd_bus_message* answer) {
    int done = sd_bus_message_open_container(answer, 'a', "s");
    for (const std::string& type : desktopMediaTypes())
        if (done >= 0)
            done = sd_bus_message_append(answer, "s", type.c_str());
    return done >= 0 ? sd_bus_message_close_container(answer) : done;
}

int appendMetadata(sd_bus_message* answer, const RemoteView& view, const std::string& song) {
    if (view.path.empty())
        return sd_bus_message_append(answer, "a{sv}", 1, "mpris:trackid", "o", noSong);
    const auto& [title, artist, album] = view.tags;
    const std::string shownTitle = validText(title.empty() ? view.name : title);
    int done = sd_bus_message_open_container(answer, 'a', "{sv}");
    const auto add = [&](const char* name, const char* type, const auto&... value) {
        if (done >= 0)
            done = sd_bus_message_append(answer, "{sv}", name, type, value...);
    };
    add("mpris:trackid", "o", song.c_str());
    add("mpris:length", "x", std::int64_t(view.length.count()));
    add("xesam:title", "s", shownTitle.c_str());
    add("xesam:url", "s", fileAddress(nativePath(view.path)).c_str());
    if (!artist.empty())
        add("xesam:artist", "as", 1, validText(artist).c_str());
    if (!album.empty())
        add("xesam:album", "s", validText(album).c_str());
    return done >= 0 ? sd_bus_message_close_container(answer) : done;
}

} // namespace larkspin
