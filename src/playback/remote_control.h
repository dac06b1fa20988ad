// What a remote outside the program sees and does: media keys, the player control of a desktop. It
// works the same as the media window's buttons and sliders, and like them says nothing in the room.
#pragma once

#include "chat/core.h"
#include "playback/song_tags.h"

#include <chrono>
#include <string>
#include <string_view>

namespace larkspin {

class MediaControl;
class PlayModes;
class Sliders;
class TransportButtons;

// What there is to see, but for the position. Without a song, what is about the song is 0 or empty.
struct RemoteView {
    enum class Status { stopped, playing, paused };
    enum class Loop { none, song, list };

    Status status = Status::stopped;
    Loop loop = Loop::none;
    bool shuffle = false;
    std::string name; // of the song, without its extension
    SongTags tags = {};
    std::string path;                   // drive path
    std::chrono::microseconds length{}; // 0 while unknown
    int volume = 0;                     // of Sliders::mostVolume
    int tempo = 0;                      // in hundredths of the song's own

    bool operator==(const RemoteView&) const = default;
};

class RemoteControl {
public:
    RemoteControl(const Core& core, MediaControl& player, TransportButtons& buttons,
                  PlayModes& modes, Sliders& sliders)
        : state_(core.state), player_(player), buttons_(buttons), modes_(modes), sliders_(sliders) {
    }

    RemoteView view() const;
    std::chrono::microseconds position() const;

    // Play goes on with what is paused, or starts the song last started.
    void play();
    void pause();
    void playOrPause();
    void stop();
    void next();
    void previous();

    // Presses one of these by its name: play-pause, next or previous. False for any other name.
    bool press(std::string_view button);

    // Move to a place in the song, or by a span from the present place. A place before the song's
    // beginning means its beginning; one after its end starts the next song.
    void moveTo(std::chrono::microseconds place);
    void moveBy(std::chrono::microseconds span);

    // A value outside the range counts as the nearer end of the range.
    void setVolume(double share); // 1 is loudest
    void setTempo(double factor); // 1 is the song's own

    // At most one of the modes is on: switching one on switches the others off.
    void setLoop(RemoteView::Loop loop);
    void setShuffle(bool on);

private:
    bool isStopped() const;

    AppState& state_;
    MediaControl& player_;
    TransportButtons& buttons_;
    PlayModes& modes_;
    Sliders& sliders_;
};

} // namespace larkspin
