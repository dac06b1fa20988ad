// Plays one song at a time on a thread of its own. Its owner says what he wishes and reads how
// far things are; neither waits. What the owner makes of a song that fails is left to him.
// Paths are native, times are seconds of the song, whatever its rate.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <thread>

namespace larkspin {

struct PlayerWishes {
    unsigned song = 0; // counted up for each song, and for none
    std::string path;  // empty for no song
    bool playing = true;
    double rate = 1;
    double volume = 1; // amplitude
    bool mute = false;
    unsigned seek = 0; // counted up for each seek in this song
    double seekTo = 0;
};

enum class SongPhase { opening, open, ended, failed };

struct SongReport {
    unsigned song = 0; // the song of the wishes that it is about
    SongPhase phase = SongPhase::opening;
    double duration = 0;        // 0 while unknown
    bool withoutDevice = false; // it plays into silence
};

struct PlayerLink;

class GstPlayer {
public:
    explicit GstPlayer(std::string audioSink);
    ~GstPlayer(); // leaves the thread behind when it doesn't end in good time
    GstPlayer(const GstPlayer&) = delete;
    GstPlayer& operator=(const GstPlayer&) = delete;

    void wish(const PlayerWishes& wishes);
    SongReport report() const;

    // Nothing while the song is being moved, that is until the seek of that number is done.
    std::optional<double> position(unsigned seek) const;

private:
    std::shared_ptr<PlayerLink> link_;
    std::thread thread_;
};

} // namespace larkspin
