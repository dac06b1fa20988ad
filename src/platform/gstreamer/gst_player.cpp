#include "platform/gstreamer/gst_player.h"

#include "platform/gstreamer/player_link.h"
#include "platform/gstreamer/song_worker.h"

#include <chrono>
#include <csignal>
#include <malloc.h>
#include <utility>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

constexpr auto endLimit = 2s;

// With the lock held.
void wake(PlayerLink& link) {
    if (link.bus)
        gst_bus_post(link.bus,
                     gst_message_new_application(nullptr, gst_structure_new_empty("wake")));
}

// Signals are for the program's own thread. GStreamer's threads inherit this.
void blockSignals() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_BLOCK, &all, nullptr);
}

void runWorker(const std::shared_ptr<PlayerLink>& link, std::string audioSink) {
    blockSignals();
    SongWorker(*link, std::move(audioSink)).run();
    const std::lock_guard guard(link->lock);
    link->hasEnded = true;
    link->ended.notify_all();
}

} // namespace

GstPlayer::GstPlayer(std::string audioSink) : link_(std::make_shared<PlayerLink>()) {
    // Each song is played by other threads. With a heap for each of them, the soundfont of MIDI
    // songs would stay in memory many times over.
    mallopt(M_ARENA_MAX, 1);
    thread_ = std::thread(runWorker, link_, std::move(audioSink));
}

GstPlayer::~GstPlayer() {
    std::unique_lock guard(link_->lock);
    link_->quit = true;
    wake(*link_);
    const bool ended = link_->ended.wait_for(guard, endLimit, [this] { return link_->hasEnded; });
    guard.unlock();
    if (ended)
        thread_.join();
    else
        thread_.detach();
}

void GstPlayer::wish(const PlayerWishes& wishes) {
    const std::lock_guard guard(link_->lock);
    link_->wishes = wishes;
    wake(*link_);
}

SongReport GstPlayer::report() const {
    const std::lock_guard guard(link_->lock);
    return link_->report;
}

std::optional<double> GstPlayer::position(unsigned seek) const {
    std::unique_lock guard(link_->lock);
    if (!link_->play || link_->moving || link_->seekDone != seek)
        return std::nullopt;
    GstPlay* const play = link_->play;
    guard.unlock();
    return seconds(gst_play_get_position(play));
}

} // namespace larkspin
