#include "media_window/media_frame.h"

#include "library/playlist_row.h"
#include "playback/time_forms.h"
#include "shell/app_state.h"
#include "text/number.h"
#include "text/wildcard.h"

#include <algorithm>

namespace larkspin {

namespace {

constexpr double furthestEdge = 1'000'000; // far outside any screen

int storedEdge(const std::string& value) {
    const auto edge = number(value);
    return edge ? static_cast<int>(std::clamp(*edge, -furthestEdge, furthestEdge))
                : MediaFrame::firstEdge;
}

} // namespace

void MediaFrame::load(const StoredSettings& stored) {
    keepontop(mp3s);
    mp3s.place = {storedEdge(stored.get("mp3slpos")), storedEdge(stored.get("mp3stpos")), width,
                  stored.get("mp3smini") == "yes" ? miniHeight : fullHeight};
    // What a run has kept that found no place of his for it isn't one either.
    mp3s.beside = mp3s.place.left == firstEdge && mp3s.place.top == firstEdge;
    mp3s.visible = stored.get("mp3svis") == "yes";
    jobs_ = 0; // those of the last run never come back
}

void MediaFrame::save(SettingsChanges& changes) const {
    // A window that has only stepped aside counts as shown.
    changes.emplace_back("mp3svis", mp3s.visible || jobs_ > 0 ? "yes" : "no");
    // Beside the main window it stands anew each time, until the owner has given it a place.
    changes.emplace_back("mp3stpos", std::to_string(mp3s.beside ? firstEdge : mp3s.place.top));
    changes.emplace_back("mp3slpos", std::to_string(mp3s.beside ? firstEdge : mp3s.place.left));
    changes.emplace_back("mp3smini", isMini() ? "yes" : "no");
}

void MediaFrame::stepAside() {
    ++jobs_;
    mp3s.visible = false;
}

void MediaFrame::comeBack() {
    --jobs_;
    mp3s.visible = true;
}

void MediaFrame::toggleHeight() {
    mp3s.place.height = mp3s.place.height == fullHeight ? miniHeight : fullHeight;
}

void MediaFrame::showPosition() {
    state_.mediaCaption = "  song position:  " + plainposition(player_);
}

void MediaFrame::showLength() {
    state_.mediaCaption = "  song length:  " + plainlength(player_);
}

void MediaFrame::hint(std::string_view text) {
    state_.mediaCaption = text;
}

void MediaFrame::hintOfTitle() {
    hint(isMini() ? "  " + songName() : std::string(resizeHint));
}

// The song's name, with its type unless that is .mp3 in small letters.
std::string MediaFrame::songName() {
    if (!state_.tempTitle.empty())
        return state_.tempTitle;
    const Song song = songOfFile(state_.play, "");
    if (song.title().empty())
        return "song name not available";
    const std::string tag = " (" + song.extension + ")";
    return song.name + (fits(tag, " (*.mp3*") ? "" : tag);
}

} // namespace larkspin
