#include "playback/song_in_play.h"

#include "library/playlist_row.h"
#include "playback/play_modes.h"
#include "playback/remote_control.h"
#include "playback/sliders.h"
#include "playback/time_forms.h"
#include "playback/transport.h"
#include "shell/app_state.h"
#include "text/visible.h"

#include <algorithm>
#include <chrono>

namespace larkspin {

namespace {

struct Mode {
    PlayMode mode;
    const char *entry, *word;
    bool AppState::*flag; // null for none
};

constexpr Mode playModes[] = {
    {PlayMode::none, "nomode", "no mode", nullptr},
    {PlayMode::repeat, "rep", "repeat", &AppState::rep},
    {PlayMode::shuffle, "crand", "shuffle", &AppState::crand},
    {PlayMode::continuous, "cintz", "continuous", &AppState::cintz},
};

PlayMode modeOf(const AppState& state) {
    const auto* const on =
        std::find_if(std::begin(playModes), std::end(playModes),
                     [&](const Mode& each) { return each.flag && state.*each.flag; });
    return on == std::end(playModes) ? PlayMode::none : on->mode;
}

int wholeSeconds(std::chrono::microseconds span) {
    return static_cast<int>(std::chrono::floor<std::chrono::seconds>(span).count());
}

} // namespace

std::string wordFor(PlayMode mode) {
    return std::ranges::find(playModes, mode, &Mode::mode)->word;
}

std::string SongView::title() const {
    if (!name.empty())
        return name;
    return hasList ? "nothing plays" : "no songs yet";
}

std::string SongView::timeAt(int second) const {
    if (isStopped())
        return {};
    return plaintime(second) + (length > 0 ? " / " + plaintime(length) : "");
}

SongView SongInPlay::view() const {
    const RemoteView remote = remote_.view();
    SongView view{
        .volume = remote.volume, .mode = modeOf(state_), .hasList = !state_.masterList.empty()};
    if (remote.status == RemoteView::Status::paused)
        view.status = SongView::Status::paused;
    // Between two songs of a mode none plays for a moment.
    else if (remote.status == RemoteView::Status::playing || state_.playMark == playingMark)
        view.status = SongView::Status::playing;
    if (view.isStopped()) {
        view.name = visibleText(transport_.lastSong().name, " ");
        return view;
    }
    view.name = visibleText(remote.name, " ");
    view.path = remote.path;
    view.position = wholeSeconds(remote_.position());
    view.length = wholeSeconds(remote.length);
    return view;
}

// It is the row last started, unless the song was one of several choices, or the list has changed.
int SongInPlay::row() const {
    const Song song = transport_.lastSong();
    if (state_.playMark != playingMark || !state_.tempTitle.empty() || song.title().empty())
        return -1;
    const auto isIt = [&](const Row& row) { return isSameFile(songOfRow(row.text()), song); };
    const RowList& rows = state_.masterList;
    if (const int last = transport_.resumeRow(); isIt(rows.share(last)))
        return last;
    const auto same = rows.equals(Row(makerow(song.name, song.extension, song.directory)));
    const auto found = std::ranges::find_if(same, isIt);
    return found == same.end() ? -1 : rows.find(*found);
}

void SongInPlay::playOrPause() {
    const bool nothingYet = view().isStopped() && transport_.lastSong().title().empty();
    if (nothingYet && !state_.masterList.empty())
        remote_.next();
    else
        remote_.playOrPause();
}

void SongInPlay::next() {
    remote_.next();
}

void SongInPlay::previous() {
    remote_.previous();
}

void SongInPlay::moveTo(int second, const std::string& path) {
    const SongView now = view();
    if (now.path == path)
        remote_.moveTo(std::chrono::seconds(std::clamp(second, 0, now.length)));
}

void SongInPlay::setVolume(int volume) {
    sliders_.moveVolume(std::clamp(volume, 0, Sliders::mostVolume));
}

// At most one is on, so that switching one on is enough.
void SongInPlay::setMode(PlayMode mode) {
    for (const Mode& each : playModes)
        if (each.flag && (mode == each.mode || mode == PlayMode::none))
            modes_.set(each.flag, mode == each.mode);
}

Menu SongInPlay::modeMenu() {
    return {.name = "modes", .entries = [this] {
                std::vector<MenuEntry> entries;
                for (const Mode& each : playModes)
                    entries.push_back({.name = each.entry,
                                       .caption = each.word,
                                       .action = [this, mode = each.mode] { setMode(mode); },
                                       .checked = modeOf(state_) == each.mode});
                return entries;
            }};
}

} // namespace larkspin
