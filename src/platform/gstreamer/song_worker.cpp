#include "platform/gstreamer/song_worker.h"

#include "platform/gstreamer/gst_setup.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace larkspin {

namespace {

// GstPlay keeps the rate of a song that failed, but plays the next one at its normal speed.
constexpr double unknownRate = 0;

GstClockTime clockTime(double seconds) {
    return static_cast<GstClockTime>(seconds * GST_SECOND);
}

// A pipe or a device would be waited for without end.
bool isPlainFile(const std::string& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

} // namespace

SongWorker::SongWorker(PlayerLink& link, std::string audioSink)
    : link_(link), output_(std::move(audioSink)) {}

void SongWorker::run() {
    setUp();
    while (takeWishes()) {
        if (wishes_.song != song_)
            begin();
        drive();
        publish();
        GstMessage* const message = gst_bus_timed_pop(bus_.get(), GST_CLOCK_TIME_NONE);
        if (!message)
            continue;
        handle(message);
        gst_message_unref(message);
    }
    const std::lock_guard guard(link_.lock);
    link_.play = nullptr;
    link_.bus = nullptr;
}

// Where GStreamer can't play at all, the bus alone is there and every song fails.
void SongWorker::setUp() {
    if (startGStreamer())
        play_ = makePlay();
    bus_.reset(play_ ? gst_play_get_message_bus(play_.get()) : gst_bus_new());
    const std::lock_guard guard(link_.lock);
    link_.play = play_.get();
    link_.bus = bus_.get();
}

bool SongWorker::takeWishes() {
    {
        const std::lock_guard guard(link_.lock);
        if (link_.quit)
            return false;
        wishes_ = link_.wishes;
    }
    if (play_)
        applyLoudness();
    return true;
}

void SongWorker::applyLoudness() {
    if (volume_ != wishes_.volume)
        gst_play_set_volume(play_.get(), wishes_.volume);
    if (mute_ != wishes_.mute)
        gst_play_set_mute(play_.get(), wishes_.mute);
    volume_ = wishes_.volume;
    mute_ = wishes_.mute;
}

void SongWorker::begin() {
    song_ = wishes_.song;
    duration_ = 0;
    seeking_ = 0;
    seekDone_ = 0;
    resumeAt_ = 0;
    triedAnotherOutput_ = false;
    if (wishes_.path.empty())
        finish(SongPhase::ended);
    else if (!play_ || !isPlainFile(wishes_.path))
        finish(SongPhase::failed);
    else
        load();
}

// Every song is opened paused: its rate can be set once it is known to be seekable, and no
// moment of it sounds at another rate.
void SongWorker::load() {
    gchar* const uri = g_filename_to_uri(wishes_.path.c_str(), nullptr, nullptr);
    if (!uri) {
        finish(SongPhase::failed);
        return;
    }
    phase_ = SongPhase::opening;
    seekable_ = false;
    prerolled_ = false;
    moving_ = false;
    seeking_ = seekDone_;
    playing_ = false;
    ++loads_;
    publish(); // asked for its position now, GstPlay would answer late
    const GstRef<GstElement> pipeline(gst_play_get_pipeline(play_.get()));
    output_.attach(pipeline.get());
    renewTempoFilter(pipeline.get());
    gst_play_set_uri(play_.get(), uri);
    gst_play_pause(play_.get());
    g_free(uri);
}

// From what is to what is wished. A new rate and a seek are waited for, one at a time.
void SongWorker::drive() {
    if (!prerolled_ || moving_)
        return;
    if (seekable_ && rate_ != wishes_.rate) {
        rate_ = wishes_.rate;
        moving_ = true;
        gst_play_set_rate(play_.get(), rate_);
    } else if (resumeAt_ > 0) {
        seek(std::exchange(resumeAt_, 0));
    } else if (seekDone_ != wishes_.seek) {
        seeking_ = wishes_.seek;
        seek(wishes_.seekTo);
    }
    if (moving_)
        return;
    if (playing_ != wishes_.playing) {
        playing_ = wishes_.playing;
        if (playing_)
            gst_play_play(play_.get());
        else
            gst_play_pause(play_.get());
    }
    if (!playing_)
        phase_ = SongPhase::open;
}

void SongWorker::seek(double target) {
    if (!seekable_) {
        seekDone_ = seeking_;
        return;
    }
    moving_ = true;
    gst_play_seek(play_.get(), clockTime(duration_ > 0 ? std::min(target, duration_) : target));
}

void SongWorker::handle(GstMessage* message) {
    if (!gst_play_is_play_message(message))
        return;
    GstPlayMessage type{};
    gst_play_message_parse_type(message, &type);
    if (type == GST_PLAY_MESSAGE_URI_LOADED)
        ++loaded_;
    else if (loaded_ == loads_ && (phase_ == SongPhase::opening || phase_ == SongPhase::open))
        handlePlayMessage(message, type);
}

void SongWorker::handlePlayMessage(GstMessage* message, GstPlayMessage type) {
    if (type == GST_PLAY_MESSAGE_STATE_CHANGED) {
        GstPlayState state{};
        gst_play_message_parse_state_changed(message, &state);
        if (state == GST_PLAY_STATE_PAUSED && !std::exchange(prerolled_, true))
            rate_ = gst_play_get_rate(play_.get()) == 1 ? 1 : unknownRate;
        if (state == GST_PLAY_STATE_PLAYING)
            phase_ = SongPhase::open;
    } else if (type == GST_PLAY_MESSAGE_DURATION_CHANGED) {
        GstClockTime duration = 0;
        gst_play_message_parse_duration_updated(message, &duration);
        duration_ = seconds(duration);
    } else if (type == GST_PLAY_MESSAGE_SEEK_DONE) {
        moving_ = false;
        seekDone_ = seeking_;
    } else if (type == GST_PLAY_MESSAGE_MEDIA_INFO_UPDATED) {
        readMedia(message);
    } else if (type == GST_PLAY_MESSAGE_END_OF_STREAM) {
        handleEnd();
    } else if (type == GST_PLAY_MESSAGE_ERROR) {
        failed(message);
    }
}

// Some files tell their length only by ending. One that ends without a sound is no song.
void SongWorker::handleEnd() {
    gint64 position = 0;
    const GstRef<GstElement> pipeline(gst_play_get_pipeline(play_.get()));
    if (duration_ == 0 && gst_element_query_position(pipeline.get(), GST_FORMAT_TIME, &position))
        duration_ = seconds(static_cast<GstClockTime>(position));
    finish(duration_ > 0 ? SongPhase::ended : SongPhase::failed);
}

void SongWorker::readMedia(GstMessage* message) {
    GstPlayMediaInfo* info = nullptr;
    gst_play_message_parse_media_info_updated(message, &info);
    if (!info)
        return;
    seekable_ = gst_play_media_info_is_seekable(info) != FALSE;
    if (gst_play_media_info_get_number_of_audio_streams(info) == 0)
        finish(SongPhase::failed);
    g_object_unref(info);
}

// An output that broke is replaced, once a song: the song goes on where it was.
void SongWorker::failed(GstMessage* message) {
    GError* error = nullptr;
    gst_play_message_parse_error(message, &error, nullptr);
    const bool ofOutput = error && AudioOutput::isNamedIn(error->message);
    g_clear_error(&error);
    if (!ofOutput || triedAnotherOutput_) {
        finish(SongPhase::failed);
        return;
    }
    triedAnotherOutput_ = true;
    if (prerolled_)
        resumeAt_ = seconds(gst_play_get_position(play_.get())); // the last one that was read
    output_.lose();
    load();
}

void SongWorker::finish(SongPhase phase) {
    phase_ = phase;
    prerolled_ = false;
    moving_ = false;
    if (play_)
        gst_play_stop(play_.get());
}

void SongWorker::publish() {
    const std::lock_guard guard(link_.lock);
    link_.report = {song_, phase_, duration_, output_.isSilent()};
    link_.seekDone = seekDone_;
    link_.moving = moving_;
}

} // namespace larkspin
