#include "playback/media_window.h"

#include "playback/time_forms.h"
#include "shell/app_state.h"
#include "text/number.h"

#include <algorithm>

namespace larkspin {

namespace {

constexpr int defaultEdge = 4500;
constexpr double furthestEdge = 1'000'000; // far outside any screen

int storedEdge(const std::string& value) {
    const auto edge = number(value);
    return edge ? static_cast<int>(std::clamp(*edge, -furthestEdge, furthestEdge)) : defaultEdge;
}

} // namespace

void MediaWindow::load(const StoredSettings& stored) {
    keepontop(mp3s);
    mp3s.place = {storedEdge(stored.get("mp3slpos")), storedEdge(stored.get("mp3stpos")), width,
                  stored.get("mp3smini") == "yes" ? miniHeight : fullHeight};
    mp3s.visible = stored.get("mp3svis") == "yes";
}

void MediaWindow::save(SettingsChanges& changes) const {
    changes.emplace_back("mp3svis", mp3s.visible ? "yes" : "no");
    changes.emplace_back("mp3stpos", std::to_string(mp3s.place.top));
    changes.emplace_back("mp3slpos", std::to_string(mp3s.place.left));
    changes.emplace_back("mp3smini", isMini() ? "yes" : "no");
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
