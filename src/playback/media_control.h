// The port to the media control: one song at a time, asked by polling.
//
// The member names are those of the control that the program has always spoken to. Every
// call returns at once; the reads answer in microseconds, since they are made at each tick.
// A call that makes no sense at the moment (Play with nothing loaded) does nothing.
#pragma once

#include "playback/song_tags.h"

#include <optional>
#include <string>

namespace larkspin {

// What PlayState reads. The numbers are the control's own.
enum class PlayState {
    stopped = 0, // stopped by hand, played to its end, or given up on
    paused = 1,
    playing = 2,
    waiting = 3, // opening or buffering
    scanningForward = 4,
    scanningBackward = 5,
    closed = 6, // nothing loaded
};

class MediaControl {
public:
    virtual ~MediaControl() = default;

    // Loads the file at a drive path and starts it. May return before it sounds, with
    // PlayState at waiting. A file that can't be played reads waiting for two seconds and
    // then stopped, so that a list of such files moves on slowly. An empty path closes.
    virtual void Open(const std::string& fileName) = 0;

    virtual void Play() = 0; // goes on after Pause
    virtual void Pause() = 0;
    virtual void Stop() = 0; // PlayState becomes stopped at once

    virtual larkspin::PlayState PlayState() = 0;
    // Why the current song reads stopped, if it couldn't be played: none of it sounded, or the
    // player under it failed. An empty text where nobody knows more.
    virtual std::optional<std::string> failure() = 0;
    bool wasGivenUp() { return failure().has_value(); }
    virtual std::string FileName() = 0; // as given to Open; empty when nothing is loaded

    // What the file says of its song; nothing while it isn't known. In valid UTF-8, on one line.
    virtual SongTags tags() { return {}; }

    virtual double Duration() = 0;        // seconds; 0 while unknown
    virtual double CurrentPosition() = 0; // seconds; 0 when nothing is loaded
    virtual void setCurrentPosition(double seconds) = 0;

    virtual void setRate(double rate) = 0;  // 1.0 is normal; 0 or less is ignored; survives Open
    virtual void setVolume(int volume) = 0; // hundredths of a decibel, 0 is loudest, -3000 faint
    virtual void setMute(bool mute) = 0;    // independent of the volume

    // The control's own bars and panels, and its size in twips (1/1440 inch). A player that
    // has none ignores both.
    virtual void setOwnControlsVisible(bool visible) = 0;
    virtual void setSize(int width, int height) = 0;
};

} // namespace larkspin
