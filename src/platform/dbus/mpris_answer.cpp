#include "platform/dbus/mpris_answer.h"

#include "text/line_breaks.h"
#include "text/utf8.h"

#include <string_view>

namespace larkspin {

namespace {

constexpr std::size_t longestTitle = 300; // characters, of all that is shown

// Whether the next value is a variant that holds that type.
bool comesNext(sd_bus_message* message, std::string_view type) {
    char kind = 0;
    const char* contents = nullptr;
    return sd_bus_message_peek_type(message, &kind, &contents) > 0 && kind == SD_BUS_TYPE_VARIANT &&
           contents == type;
}

// Walks through a dictionary of variants. `take` reads the value of a key to its end; when it
// returns false the message can't be read on, and the rest is left out.
template <class Take> void forEachEntry(sd_bus_message* message, const Take& take) {
    if (sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "{sv}") <= 0)
        return;
    const char* key = nullptr;
    while (sd_bus_message_enter_container(message, SD_BUS_TYPE_DICT_ENTRY, "sv") > 0 &&
           sd_bus_message_read_basic(message, SD_BUS_TYPE_STRING, &key) > 0)
        if (!take(std::string_view(key)) || sd_bus_message_exit_container(message) < 0)
            return;
    sd_bus_message_exit_container(message);
}

bool skip(sd_bus_message* message) {
    return sd_bus_message_skip(message, "v") >= 0;
}

bool readText(sd_bus_message* message, std::string& text) {
    const char* value = nullptr;
    if (!comesNext(message, "s"))
        return skip(message);
    if (sd_bus_message_read(message, "v", "s", &value) <= 0)
        return false;
    text.assign(value, prefixLength(value, longestTitle));
    return true;
}

bool readTexts(sd_bus_message* message, std::string& joined) {
    if (!comesNext(message, "as"))
        return skip(message);
    if (sd_bus_message_enter_container(message, SD_BUS_TYPE_VARIANT, "as") <= 0 ||
        sd_bus_message_enter_container(message, SD_BUS_TYPE_ARRAY, "s") <= 0)
        return false;
    const char* value = nullptr;
    while (sd_bus_message_read_basic(message, SD_BUS_TYPE_STRING, &value) > 0)
        if (*value && joined.size() < longestTitle)
            joined.append(joined.empty() ? "" : ", ")
                .append(value, prefixLength(value, longestTitle));
    return sd_bus_message_exit_container(message) >= 0 &&
           sd_bus_message_exit_container(message) >= 0;
}

std::string readSong(sd_bus_message* message) {
    std::string artists, title;
    if (sd_bus_message_enter_container(message, SD_BUS_TYPE_VARIANT, "a{sv}") > 0) {
        forEachEntry(message, [&](std::string_view key) {
            if (key == "xesam:title")
                return readText(message, title);
            return key == "xesam:artist" ? readTexts(message, artists) : skip(message);
        });
        sd_bus_message_exit_container(message);
    }
    if (!artists.empty() && !title.empty())
        title = artists + " - " + title;
    title.resize(prefixLength(title, longestTitle));
    return controlsAsBlanks(title);
}

} // namespace

MprisAnswer readMprisAnswer(sd_bus_message* properties) {
    MprisAnswer answer;
    std::string status;
    forEachEntry(properties, [&](std::string_view key) {
        if (key == "PlaybackStatus")
            return readText(properties, status);
        if (key != "Metadata" || !comesNext(properties, "a{sv}"))
            return skip(properties);
        answer.title = readSong(properties);
        return true;
    });
    if (status == "Playing")
        answer.status = MprisAnswer::Status::playing;
    else if (status == "Paused")
        answer.status = MprisAnswer::Status::paused;
    return answer;
}

} // namespace larkspin
