#include "host/slash_examples.h"

#include <utility>

namespace larkspin {

namespace {

constexpr std::pair<std::string_view, std::string_view> examples[] = {
    // rooms and talking
    {"join", "#music"},
    {"leave", "#music"},
    {"names", "#music"},
    {"topic", "songs for a rainy evening"},
    {"room", "2"},
    {"list", "#music* 10"},
    {"mode", "#music +t"},
    {"invite", "ann #music"},
    {"msg", "ann have you heard this one?"},
    {"query", "ann"},
    {"me", "waves"},
    {"notice", "ann it is your turn"},
    {"ns", "info ann"},
    {"cs", "info #music"},
    {"now", "'next"},
    {"lines", "50"},
    {"find", "ferry"},
    // people
    {"nick", "jo"},
    {"who", "ann*"},
    {"whois", "ann"},
    {"whowas", "ann"},
    {"away", "back at nine"},
    {"op", "ann"},
    {"deop", "ann"},
    {"voice", "ann"},
    {"devoice", "ann"},
    {"kick", "bob too loud"},
    {"ban", "bob"},
    {"unban", "bob"},
    {"ignore", "bob"},
    {"unignore", "bob"},
    // networks
    {"connect", "irc.libera.chat jo #music"},
    {"reconnect", "libera"},
    {"disconnect", "libera"},
    {"networks", "forget libera"},
    {"login", "jo keep"},
    {"pass", "keep"},
    {"user", "jo Jo of the harbour"},
    {"certificate", "~/jo.pem"},
    {"trust", "none"},
    {"atstart", "off"},
    {"onconnect", "/join #den"},
    {"limit", "30"},
    {"quote", "LUSERS"},
    {"oper", "jo PASSWORD"},
    // home
    {"as", "ann nice one, that"},
    {"bye", "ann"},
    {"whisper", "ann are you there?"},
    // larkspin
    {"addmusic", "~/Music"},
    {"log", "on"},
    {"stamps", "off"},
    {"namecolours", "on"},
    {"notifications", "off"},
    {"textsize", "120"},
    {"colours", "dark"},
    {"closing", "tray"},
    {"musicfolder", "~/Music"},
    {"help", "play"},
    // windows
    {"show", "mp3s"},
    {"click", "mp3s.closeLabel"},
    {"double", "mp3s.playlistView 3"},
    {"select", "mp3s.playlistView 1 3 7-9"},
    {"key", "mp3s.playlistView delete"},
    {"set", "mp3s.HScroll2 40"},
    {"hover", "mp3s.playlistView"},
    {"menu", "rep"},
    {"choose", "adfil"},
};

} // namespace

std::string_view exampleOf(std::string_view word) {
    for (const auto& [name, example] : examples)
        if (name == word)
            return example;
    return {};
}

} // namespace larkspin
