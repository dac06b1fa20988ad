// The player's thread: brings GStreamer up, then makes the wishes true step by step as its
// messages come in. Messages of an earlier song never count for a later one.
#pragma once

#include "platform/gstreamer/audio_output.h"
#include "platform/gstreamer/player_link.h"

#include <optional>

namespace larkspin {

class SongWorker {
public:
    SongWorker(PlayerLink& link, std::string audioSink);

    void run(); // until the link says to quit

private:
    void setUp();
    bool takeWishes(); // false to quit
    void applyLoudness();
    void begin();
    void load();
    void drive();
    void seek(double target);
    void handle(GstMessage* message);
    void handlePlayMessage(GstMessage* message, GstPlayMessage type);
    void handleEnd();
    void readMedia(GstMessage* message);
    void failed(GstMessage* message);
    void finish(SongPhase phase);
    void publish();

    PlayerLink& link_;
    AudioOutput output_;
    GstRef<GstPlay> play_;
    GstRef<GstBus> bus_;
    PlayerWishes wishes_;
    std::optional<double> volume_; // as told to GStreamer, like mute
    std::optional<bool> mute_;

    // GstPlay confirms each loading in turn; what it reports before belongs to an older song.
    unsigned loads_ = 0, loaded_ = 0;

    // Of the song in hand.
    unsigned song_ = 0;
    SongPhase phase_ = SongPhase::ended;
    double duration_ = 0;
    bool seekable_ = false;
    bool prerolled_ = false; // moving and playing make sense from here on
    bool moving_ = false;
    double rate_ = 1;
    bool playing_ = false; // what GstPlay was told
    unsigned seeking_ = 0, seekDone_ = 0;
    bool triedAnotherOutput_ = false;
    double resumeAt_ = 0; // where a song that lost its output goes on
};

} // namespace larkspin
