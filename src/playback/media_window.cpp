#include "playback/media_window.h"

#include "playback/time_forms.h"
#include "shell/app_state.h"
#include "shell/settings.h"
#include "text/number.h"

#include <algorithm>

namespace larkspin {

namespace {

// Twips. Only these two heights are ever set.
constexpr int fullHeight = 2520;
constexpr int miniHeight = 315;
constexpr int width = 4500;
constexpr int defaultEdge = 4500;
constexpr double furthestEdge = 1'000'000; // far outside any screen

int storedEdge(const std::string& value) {
    const auto edge = number(value);
    return edge ? static_cast<int>(std::clamp(*edge, -furthestEdge, furthestEdge)) : defaultEdge;
}

} // namespace

MediaWindow::MediaWindow(AppState& state, Settings& settings, MediaControl& player, EventLoop& loop)
    : state_(state), settings_(settings), player_(player) {
    mp3s.name = "mp3s";
    mp3s.controls = {
        {.name = "mediaCaption",
         .place = {0, 0, width, miniHeight},
         .text = [this] { return state_.mediaCaption; },
         .onMouseDown = [this, &loop] { dragwindow(loop, mp3s); },
         .onDoubleClick = [this] { toggleHeight(); }},
    };
}

void MediaWindow::load() {
    keepontop(mp3s);
    mp3s.visible = false;
    mp3s.place = {storedEdge(settings_.get("mp3slpos")), storedEdge(settings_.get("mp3stpos")),
                  width, settings_.get("mp3smini") == "yes" ? miniHeight : fullHeight};
}

void MediaWindow::unload() {
    settings_.put("mp3stpos", std::to_string(mp3s.place.top));
    settings_.put("mp3slpos", std::to_string(mp3s.place.left));
    settings_.put("mp3smini", isMini() ? "yes" : "no");
    mp3s.visible = false;
}

bool MediaWindow::isMini() const {
    return mp3s.place.height == miniHeight;
}

void MediaWindow::toggleHeight() {
    mp3s.place.height = isMini() ? fullHeight : miniHeight;
}

void MediaWindow::showPosition() {
    state_.mediaCaption = "  song position:  " + plainposition(player_);
}

void MediaWindow::showLength() {
    state_.mediaCaption = "  song length:  " + plainlength(player_);
}

} // namespace larkspin
