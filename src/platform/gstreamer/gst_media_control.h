// The media control on GStreamer. Whatever takes time happens on threads of the player behind
// it, which exist from the first song on; here is what the program reads between two ticks.
// What a file holds is left to GStreamer's own plug-ins.
#pragma once

#include "platform/gstreamer/gst_player.h"
#include "playback/media_control.h"
#include "shell/event_loop.h"

#include <functional>
#include <memory>
#include <string>

namespace larkspin {

class GstMediaControl : public MediaControl {
public:
    // The loop tells the time. `audioSink` names where the sound goes, as GStreamer's launch
    // lines do; without it, that is the sound device, or silence where there is none. Of that,
    // the owner is told once, through `tell`.
    using Tell = std::function<void(const std::string& line)>;
    GstMediaControl(const EventLoop& loop, std::string audioSink, Tell tell);
    ~GstMediaControl() override;

    void Open(const std::string& fileName) override;
    void Play() override;
    void Pause() override;
    void Stop() override;
    larkspin::PlayState PlayState() override;
    bool wasGivenUp() override { return false; }
    std::string FileName() override { return fileName_; }
    double Duration() override;
    double CurrentPosition() override;
    void setCurrentPosition(double seconds) override;
    void setRate(double rate) override;
    void setVolume(int volume) override;
    void setMute(bool mute) override;
    void setOwnControlsVisible(bool) override {}
    void setSize(int, int) override {}

private:
    void wish();
    void dropSong();
    SongPhase readPlayer();
    bool hangs();

    const EventLoop& loop_;
    std::string audioSink_;
    Tell tell_;
    bool hasTold_ = false;
    std::unique_ptr<GstPlayer> player_; // made by the first Open
    PlayerWishes wishes_;

    std::string fileName_;
    Nanoseconds openedAt_{};
    bool stopped_ = false; // by hand, or because it hung
    double duration_ = 0, position_ = 0;

    // A song that stands still is counted once a second, see `hangs`.
    Nanoseconds watchedAt_{};
    double watchedPosition_ = 0;
    int standstill_ = 0;
};

} // namespace larkspin
