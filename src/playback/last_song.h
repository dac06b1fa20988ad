// The list song last started: the state knows it (`play`, `playpath`), the settings only keep it
// for the next run. What acts on files asks here, so that no full disk or failed read can put
// another song in its place.
#pragma once

#include "chat/core.h"
#include "library/playlist_row.h"
#include "shell/settings.h"

#include <optional>

namespace larkspin {

class LastSong {
public:
    explicit LastSong(const Core& core) : state_(core.state), settings_(core.settings) {}

    void load(const StoredSettings& stored);
    void save(SettingsChanges& changes) const;

    Song song() const; // in this run or before; may be empty

    // The song whose file the owner may work on: that one, unless it was started in another run,
    // the player has let go of it, or a file from disk has been opened since.
    std::optional<Song> inHand() const;

    void take(const Song& song);           // the song last started is this one from now on
    void takeAgain() { isInHand_ = true; } // the same song is started once more
    void follow(const Song& song);         // its file has got another name
    void letGo() { isInHand_ = false; }
    void forget(); // its file is gone

private:
    AppState& state_;
    Settings& settings_;
    bool isInHand_ = false;
};

} // namespace larkspin
