#include "playback/last_song.h"

#include "shell/app_state.h"

namespace larkspin {

// An older version that ended in the middle of a random pick has left the mark of the pick (0, 1 or
// 2) in place of a song.
void LastSong::load(const StoredSettings& stored) {
    state_.play = stored.get("play");
    state_.playpath = stored.get("playpath");
    if (state_.play == "0" || state_.play == "1" || state_.play == "2")
        state_.play.clear();
}

void LastSong::save(SettingsChanges& changes) const {
    changes.emplace_back("play", state_.play);
    if (!state_.playpath.empty())
        changes.emplace_back("playpath", state_.playpath);
}

Song LastSong::song() const {
    return songOfFile(state_.play, state_.playpath);
}

std::optional<Song> LastSong::inHand() const {
    if (!isInHand_ || !state_.tempTitle.empty() || state_.play.empty())
        return std::nullopt;
    return song();
}

void LastSong::take(const Song& song) {
    isInHand_ = true;
    follow(song);
}

void LastSong::follow(const Song& song) {
    state_.play = song.title();
    state_.playpath = song.directory;
    // In one write, so that name and directory always belong together on the disk.
    settings_.putAll({{"play", state_.play}, {"playpath", state_.playpath}});
}

void LastSong::forget() {
    isInHand_ = false;
    state_.play.clear();
    settings_.put("play", "");
}

} // namespace larkspin
