// Plays one song at a time: makes the wishes true step by step, as GStreamer's messages come
// in. Messages of an earlier song never count for a later one. All of it may hang or end the
// process on a damaged file; whoever started it deals with that.
#pragma once

#include "platform/gstreamer/audio_output.h"
#include "platform/gstreamer/file_source.h"
#include "platform/gstreamer/sound_source.h"
#include "platform/gstreamer/synthesizer.h"
#include "platform/player/player_messages.h"

#include <string>

namespace larkspin {

class SongPlayer {
public:
    // GStreamer is up already. The sink is described as in its launch lines, or is empty.
    explicit SongPlayer(std::string audioSink);

    bool canPlay() const { return playbin_ != nullptr; } // else every song fails

    int messages() const; // a descriptor that is readable while there are messages to handle
    void handleMessages();

    // The file is the one of a new song, before which the older one was dropped.
    void wish(const PlayerWishes& wishes, SongFile file);
    bool drop(); // the current song; false when something of it is still at work
    std::uint32_t song() const { return song_; }
    PlayerReport report(); // with the position of this moment
    bool isSilent() const { return output_.isSilent(); }
    bool isPlaying() const { return playing_ && phase_ == SongPhase::open; }

private:
    void begin(SongFile file);
    bool openSource();
    OpenedSong openMidi();
    void load();
    void drive();
    bool isSettled() const;
    bool step();
    bool isPlaced() const;
    void move();
    void handle(GstMessage* message);
    void handleError(GstMessage* message);
    void handleEnd();
    int countSounds() const;
    void preroll();
    void readDuration();
    void readPosition();
    void reckonPosition();
    void finish(SongPhase phase);
    bool isDown() const;
    void clear();
    static void setUpSource(GstElement*, GstElement* source, gpointer self);

    AudioOutput output_;
    std::unique_ptr<Synthesizer> synthesizer_; // from the first MIDI song on
    GstRef<GstElement> playbin_;
    GstRef<GstBus> bus_;
    PlayerWishes wishes_;

    // About the current song.
    std::uint32_t song_ = 0;
    SongFile file_;
    std::unique_ptr<FileSource> bytes_;   // for GStreamer to decode
    std::unique_ptr<SoundSource> source_; // or decoded already
    GstRef<GstElement> fed_;              // by one of the two
    SongPhase phase_ = SongPhase::ended;
    SongFault fault_{}; // if it has failed
    SongTags tags_;
    double duration_ = 0, position_ = 0;
    std::chrono::steady_clock::time_point readAt_; // when the position was as it stands
    bool seekable_ = false;
    bool prerolled_ = false; // the song is ready to be moved and played
    bool moving_ = false;    // to a new place or rate
    double rate_ = 1;
    bool playing_ = false; // what the pipeline was told
    std::uint32_t seeking_ = 0, seekDone_ = 0;
    bool sounded_ = false;
    bool lostOutput_ = false; // at least once
    bool displaced_ = false;  // by that: it has to be moved back to its position
};

} // namespace larkspin
