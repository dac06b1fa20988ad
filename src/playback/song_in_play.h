// The song in play as a front end shows it at a glance, and what the owner does with it there. It
// works the same as the media window's buttons and sliders, and like them says nothing in the room.
#pragma once

#include "chat/core.h"
#include "shell/menu.h"

#include <string>

namespace larkspin {

class PlayModes;
class RemoteControl;
class Sliders;
class Transport;

enum class PlayMode { none, repeat, shuffle, continuous };

std::string wordFor(PlayMode mode);

// What there is to see. It changes once a second at most while nobody does anything.
struct SongView {
    enum class Status { stopped, playing, paused };

    Status status = Status::stopped;
    // As it is to be seen: of the song in play, or else of the one that would be.
    std::string name = {};
    std::string path = {};        // drive path of the song in play; empty without one
    int position = 0, length = 0; // in seconds; a length of 0 is unknown
    int volume = 0;               // of Sliders::mostVolume
    PlayMode mode = PlayMode::none;
    bool hasList = false; // there are songs to go to

    bool operator==(const SongView&) const = default;

    bool isStopped() const { return status == Status::stopped; }
    bool canPlay() const { return hasList || !isStopped() || !name.empty(); }
    std::string title() const; // the name, or why there is none

    // Where that second of the song is: "1:05 / 3:07"; empty without a song.
    std::string timeAt(int second) const;
};

class SongInPlay {
public:
    SongInPlay(const Core& core, RemoteControl& remote, Transport& transport, PlayModes& modes,
               Sliders& sliders)
        : state_(core.state), remote_(remote), transport_(transport), modes_(modes),
          sliders_(sliders) {}

    SongView view() const;

    // Its row in the playlist; -1 when it is on none, or nothing plays.
    int row() const;

    // Begins with the first song of the list, or with any in a shuffle, if none was ever played.
    void playOrPause();
    void next();
    void previous();

    // To that second, if the song with this path is still in play.
    void moveTo(int second, const std::string& path);

    void setVolume(int volume);
    void setMode(PlayMode mode);
    Menu modeMenu();

private:
    AppState& state_;
    RemoteControl& remote_;
    Transport& transport_;
    PlayModes& modes_;
    Sliders& sliders_;
};

} // namespace larkspin
