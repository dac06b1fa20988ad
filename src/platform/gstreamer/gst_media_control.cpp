#include "platform/gstreamer/gst_media_control.h"

#include "platform/posix/drive_paths.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

constexpr Nanoseconds giveUpDelay = 2s; // from Open on, for a file that can't be played
constexpr Nanoseconds watchInterval = 1s;
constexpr int standstillLimit = 20; // rounds of the watch

} // namespace

GstMediaControl::GstMediaControl(const EventLoop& loop, std::string audioSink, Tell tell)
    : loop_(loop), audioSink_(std::move(audioSink)), tell_(std::move(tell)) {}

GstMediaControl::~GstMediaControl() = default;

void GstMediaControl::Open(const std::string& fileName) {
    fileName_ = fileName;
    duration_ = 0;
    position_ = 0;
    stopped_ = false;
    openedAt_ = loop_.now();
    watchedAt_ = openedAt_;
    standstill_ = 0;
    if (fileName.empty()) {
        dropSong();
        return;
    }
    if (!player_)
        player_ = std::make_unique<GstPlayer>(audioSink_);
    ++wishes_.song;
    wishes_.path = nativePath(fileName);
    wishes_.playing = true;
    wishes_.seek = 0;
    wish();
}

void GstMediaControl::Play() {
    wishes_.playing = true;
    wish();
}

void GstMediaControl::Pause() {
    wishes_.playing = false;
    wish();
}

void GstMediaControl::Stop() {
    readPlayer();
    stopped_ = true;
    dropSong();
}

PlayState GstMediaControl::PlayState() {
    if (fileName_.empty())
        return PlayState::closed;
    if (stopped_)
        return PlayState::stopped;
    const SongPhase phase = readPlayer();
    if (phase == SongPhase::failed)
        return loop_.now() - openedAt_ < giveUpDelay ? PlayState::waiting : PlayState::stopped;
    if (phase == SongPhase::ended)
        return PlayState::stopped;
    if (hangs()) {
        Stop();
        return PlayState::stopped;
    }
    if (phase == SongPhase::opening)
        return PlayState::waiting;
    return wishes_.playing ? PlayState::playing : PlayState::paused;
}

double GstMediaControl::Duration() {
    readPlayer();
    return duration_;
}

double GstMediaControl::CurrentPosition() {
    const SongPhase phase = readPlayer();
    if (phase == SongPhase::open && !stopped_) {
        if (const auto position = player_->position(wishes_.seek))
            position_ = duration_ > 0 ? std::min(*position, duration_) : *position;
    } else if (phase == SongPhase::ended && !stopped_) {
        position_ = duration_;
    }
    return position_;
}

void GstMediaControl::setCurrentPosition(double seconds) {
    if (fileName_.empty() || !std::isfinite(seconds))
        return;
    const SongPhase phase = readPlayer();
    if (stopped_ || phase == SongPhase::ended || phase == SongPhase::failed)
        return;
    position_ = std::max(seconds, 0.0);
    if (duration_ > 0)
        position_ = std::min(position_, duration_);
    wishes_.seekTo = position_;
    ++wishes_.seek;
    wish();
}

void GstMediaControl::setRate(double rate) {
    if (!(rate > 0) || !std::isfinite(rate))
        return;
    wishes_.rate = rate;
    wish();
}

void GstMediaControl::setVolume(int volume) {
    wishes_.volume = std::pow(10.0, std::min(volume, 0) / 2000.0);
    wish();
}

void GstMediaControl::setMute(bool mute) {
    wishes_.mute = mute;
    wish();
}

void GstMediaControl::wish() {
    if (player_)
        player_->wish(wishes_);
}

void GstMediaControl::dropSong() {
    ++wishes_.song;
    wishes_.path.clear();
    wish();
}

// How far the song is, and what has become known of it.
SongPhase GstMediaControl::readPlayer() {
    if (!player_ || stopped_ || fileName_.empty())
        return SongPhase::ended;
    const SongReport report = player_->report();
    if (report.song != wishes_.song)
        return SongPhase::opening;
    if (report.withoutDevice && !std::exchange(hasTold_, true))
        tell_("larkspin: no sound device, songs play silently");
    if (report.duration > 0)
        duration_ = report.duration;
    return report.phase;
}

// A sound server or a disk that doesn't answer must not keep a list from moving on. Rounds are
// counted instead of time, since the whole process may have been halted in between.
bool GstMediaControl::hangs() {
    const Nanoseconds now = loop_.now();
    if (now - watchedAt_ < watchInterval)
        return false;
    watchedAt_ = now;
    const double position = CurrentPosition();
    const bool moves = position != watchedPosition_ || !wishes_.playing;
    watchedPosition_ = position;
    standstill_ = moves ? 0 : standstill_ + 1;
    return standstill_ >= standstillLimit;
}

} // namespace larkspin
