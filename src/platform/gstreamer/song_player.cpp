#include "platform/gstreamer/song_player.h"

#include "platform/gstreamer/decoded_song.h"
#include "platform/gstreamer/message_faults.h"
#include "platform/gstreamer/midi_reader.h"
#include "platform/gstreamer/tag_texts.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

constexpr const char* sourceUri = "appsrc://"; // the playbin asks what it is fed with

GstRef<GstElement> makePlaybin() {
    GstElement* const playbin = gst_element_factory_make("playbin", nullptr);
    if (!playbin)
        return nullptr;
    gst_object_ref_sink(playbin);
    gst_util_set_object_arg(G_OBJECT(playbin), "flags", "audio");
    return GstRef<GstElement>(playbin);
}

} // namespace

SongPlayer::SongPlayer(std::string audioSink)
    : output_(std::move(audioSink)), playbin_(makePlaybin()) {
    if (!playbin_)
        return;
    bus_.reset(gst_element_get_bus(playbin_.get()));
    g_signal_connect(playbin_.get(), "source-setup", G_CALLBACK(setUpSource), this);
}

int SongPlayer::messages() const {
    if (!bus_)
        return -1;
    GPollFD descriptor{};
    gst_bus_get_pollfd(bus_.get(), &descriptor);
    return descriptor.fd;
}

void SongPlayer::handleMessages() {
    while (const GstItemRef<GstMessage> message{bus_ ? gst_bus_pop(bus_.get()) : nullptr}) {
        if (phase_ == SongPhase::opening || phase_ == SongPhase::open)
            handle(message.get());
        drive();
    }
}

void SongPlayer::wish(const PlayerWishes& wishes, SongFile file) {
    wishes_ = wishes;
    output_.setLoudness(wishes_.volume, wishes_.mute);
    if (wishes_.song != song_)
        begin(std::move(file));
    drive();
}

bool SongPlayer::drop() {
    finish(SongPhase::ended);
    return isDown();
}

void SongPlayer::begin(SongFile file) {
    song_ = wishes_.song;
    tags_ = {};
    duration_ = position_ = 0;
    seeking_ = seekDone_ = 0;
    sounded_ = lostOutput_ = displaced_ = false;
    file_ = std::move(file);
    if (!wishes_.hasFile)
        return;
    phase_ = SongPhase::opening;
    if (openSource())
        load();
    else
        finish(SongPhase::failed);
}

// False when the song can't be played. Whether GStreamer can play one shows only when it is loaded.
bool SongPlayer::openSource() {
    source_.reset();
    bytes_.reset();
    OpenedSong song;
    const SongKind kind = kindOf(file_);
    if (!playbin_)
        song.fault = SongFault::noDecoder;
    else if (file_.begin(1).empty())
        song.fault = file_.isOpen() && file_.size() == 0 ? SongFault::empty : SongFault::unread;
    else if (kind == SongKind::other)
        bytes_ = std::make_unique<FileSource>(file_);
    else
        song = kind == SongKind::midi ? openMidi() : openDecoded(file_, kind);
    fault_ = song.fault;
    tags_ = song.tags;
    if (song.reader)
        source_ = std::make_unique<SoundSource>(std::move(song.reader));
    return source_ || bytes_;
}

OpenedSong SongPlayer::openMidi() {
    if (!synthesizer_)
        synthesizer_ = Synthesizer::start();
    if (!synthesizer_)
        return {nullptr, SongFault::noDecoder};
    return MidiReader::open(file_, *synthesizer_);
}

// A song may never be ready, since decodebin can lose the error of a demuxer that fails while it is
// being put in: whoever has started this process gives it up then.
//
// Every song is opened paused: its rate can be set once it is known to be seekable, and no
// moment of it sounds at another rate.
void SongPlayer::load() {
    fault_ = SongFault::noSound; // unless it turns out to have another one
    rate_ = 1;
    output_.attach(playbin_.get(), wishes_.title);
    // A new filter for each song: the next song would make this one read buffers that it has freed.
    if (GstElement* const tempo = gst_element_factory_make("scaletempo", nullptr))
        g_object_set(playbin_.get(), "audio-filter", tempo, nullptr);
    g_object_set(playbin_.get(), "uri", sourceUri, nullptr);
    gst_element_set_state(playbin_.get(), GST_STATE_PAUSED); // what fails is told by a message
}

void SongPlayer::setUpSource(GstElement*, GstElement* source, gpointer self) {
    auto* const player = static_cast<SongPlayer*>(self);
    player->fed_.reset(GST_ELEMENT(gst_object_ref(source)));
    if (player->source_)
        player->source_->connect(source);
    else if (player->bytes_)
        player->bytes_->connect(source);
}

// Goes from the state that is to the one that is wished, step by step. A step that began before the
// last one is done would leave the song's clock where it was.
void SongPlayer::drive() {
    while (prerolled_ && isSettled() && step()) {
    }
}

bool SongPlayer::isSettled() const {
    return gst_element_get_state(playbin_.get(), nullptr, nullptr, 0) == GST_STATE_CHANGE_SUCCESS;
}

// Takes the next step; false when all is as wished. A song is moved while it is paused, so that
// nothing sounds from its old place, or from a new one at which it is to stay paused.
bool SongPlayer::step() {
    if (std::exchange(moving_, false))
        seekDone_ = seeking_;
    if (!seekable_) { // it plays from where it is
        seekDone_ = wishes_.seek;
        displaced_ = false;
    }
    const bool placed = isPlaced();
    if (const bool playing = wishes_.playing && placed; playing_ != playing) {
        playing_ = playing;
        gst_element_set_state(playbin_.get(), playing ? GST_STATE_PLAYING : GST_STATE_PAUSED);
    } else if (!placed) {
        move();
    } else {
        phase_ = SongPhase::open;
        return false;
    }
    return true;
}

bool SongPlayer::isPlaced() const {
    return !displaced_ && seekDone_ == wishes_.seek && (!seekable_ || rate_ == wishes_.rate);
}

// Moves the song to the wished place, at the wished rate, in one seek.
void SongPlayer::move() {
    readPosition();
    double target = seekDone_ == wishes_.seek ? position_ : wishes_.seekTo;
    if (duration_ > 0)
        target = std::min(target, duration_);
    displaced_ = false;
    seeking_ = wishes_.seek;
    rate_ = wishes_.rate;
    moving_ = gst_element_seek(playbin_.get(), rate_, GST_FORMAT_TIME, GST_SEEK_FLAG_FLUSH,
                               GST_SEEK_TYPE_SET, clockTime(target), GST_SEEK_TYPE_NONE, -1);
    if (moving_)
        position_ = target;
    else
        seekDone_ = seeking_;
}

void SongPlayer::handle(GstMessage* message) {
    const GstMessageType type = GST_MESSAGE_TYPE(message);
    if (type == GST_MESSAGE_ERROR)
        handleError(message);
    else if (type == GST_MESSAGE_ELEMENT)
        fault_ = faultAfter(message, fault_);
    else if (type == GST_MESSAGE_EOS && playing_ && output_.isAtEnd())
        handleEnd(); // else it is from before a pause or a seek, and comes again
    else if (type == GST_MESSAGE_ASYNC_DONE && !prerolled_)
        preroll();
    else if (type == GST_MESSAGE_DURATION_CHANGED && prerolled_)
        readDuration();
    else if (type == GST_MESSAGE_LATENCY)
        gst_bin_recalculate_latency(GST_BIN(playbin_.get()));
    else if (type == GST_MESSAGE_CLOCK_LOST && playing_) {
        gst_element_set_state(playbin_.get(), GST_STATE_PAUSED);
        gst_element_set_state(playbin_.get(), GST_STATE_PLAYING);
    }
}

int SongPlayer::countSounds() const {
    gint sounds = 0;
    g_object_get(playbin_.get(), "n-audio", &sounds, nullptr);
    return sounds;
}

void SongPlayer::preroll() {
    if (countSounds() == 0) {
        finish(SongPhase::failed);
        return;
    }
    prerolled_ = true;
    if (bytes_) // else they have been read with the song
        tags_ = tagsIn(playbin_.get());
    readDuration();
    const GstItemRef<GstQuery> query(gst_query_new_seeking(GST_FORMAT_TIME));
    gboolean seekable = FALSE;
    if (gst_element_query(playbin_.get(), query.get()))
        gst_query_parse_seeking(query.get(), nullptr, &seekable, nullptr, nullptr);
    seekable_ = seekable;
}

void SongPlayer::readDuration() {
    gint64 duration = 0;
    if (gst_element_query_duration(playbin_.get(), GST_FORMAT_TIME, &duration) && duration > 0)
        duration_ = seconds(duration);
}

void SongPlayer::readPosition() {
    gint64 position = 0;
    if (prerolled_ && !moving_ && !displaced_ &&
        gst_element_query_position(playbin_.get(), GST_FORMAT_TIME, &position))
        position_ = seconds(position);
    readAt_ = std::chrono::steady_clock::now();
}

// An output that broke doesn't tell any more how far the song is.
void SongPlayer::reckonPosition() {
    const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - readAt_;
    if (playing_)
        position_ += passed.count() * rate_;
    if (duration_ > 0)
        position_ = std::min(position_, duration_);
}

// Some files tell their length only by ending. One that ends without a sound is no song.
void SongPlayer::handleEnd() {
    readPosition();
    sounded_ |= output_.hasSounded();
    if (duration_ == 0)
        duration_ = position_;
    finish(sounded_ && duration_ > 0 ? SongPhase::ended : SongPhase::failed);
}

// An output that broke is replaced, and by silence the second time. The song goes on where it was,
// and only its listener notices. A damaged file is played up to the damage.
void SongPlayer::handleError(GstMessage* message) {
    if (!output_.holds(GST_MESSAGE_SRC(message)) || output_.isSilent()) {
        fault_ = faultAfter(message, fault_);
        handleEnd();
        gst_element_set_state(playbin_.get(), GST_STATE_NULL);
        return;
    }
    reckonPosition();
    displaced_ = position_ > 0;
    sounded_ |= output_.hasSounded(); // nothing of the song may be left to sound
    finish(phase_);
    output_.lose(std::exchange(lostOutput_, true));
    load();
}

void SongPlayer::finish(SongPhase phase) {
    phase_ = phase;
    if (playbin_)
        clear();
    prerolled_ = moving_ = playing_ = false;
}

// When no thread works on the song any more, the messages about it are dropped. The output stays
// open from one song to the next. But a playbin whose song failed has to be put down whole, or it
// would try that song again beside the next one.
void SongPlayer::clear() {
    const bool sound = prerolled_ && phase_ != SongPhase::failed;
    gst_element_set_state(playbin_.get(), sound ? GST_STATE_READY : GST_STATE_NULL);
    gst_bus_set_flushing(bus_.get(), TRUE);
    gst_bus_set_flushing(bus_.get(), FALSE);
    output_.hasSounded();
}

// Whether nothing of the song is at work any more. If the pipeline couldn't be put down, it would
// work on beside the next song.
bool SongPlayer::isDown() const {
    if (!playbin_ || !fed_)
        return true;
    const bool isQuiet =
        gst_element_get_state(playbin_.get(), nullptr, nullptr, 0) == GST_STATE_CHANGE_SUCCESS &&
        GST_STATE(playbin_.get()) <= GST_STATE_READY;
    return isQuiet && GST_STATE(fed_.get()) <= GST_STATE_READY;
}

PlayerReport SongPlayer::report() {
    readPosition();
    return {.song = song_,
            .seek = seekDone_,
            .phase = phase_,
            .fault = fault_,
            .moving = moving_ || !prerolled_ || displaced_,
            .advancing = isPlaying(),
            .withoutDevice = output_.isSilent(),
            .duration = duration_,
            .position = position_,
            .rate = rate_,
            .at = std::chrono::steady_clock::now(),
            .tags = tags_};
}

} // namespace larkspin
