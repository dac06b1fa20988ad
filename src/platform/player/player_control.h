// The media control in front of a player process. The process is started by the first song,
// ended after a minute of rest, and replaced when it dies, stands still or isn't through with a
// song in time. The song it was at can't be played then; the one after it isn't to blame,
// and gets a process of its own. A song whose sound device goes plays on silently, until there is
// one again.
#pragma once

#include "platform/player/device_scout.h"
#include "platform/player/handover.h"
#include "platform/player/song_opening.h"
#include "platform/player/standstill.h"
#include "playback/media_control.h"
#include "shell/event_loop.h"

#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace larkspin {

class PlayerControl : public MediaControl {
public:
    struct Player {
        std::string program; // native path
        // Where the sound goes, as GStreamer's launch lines say it, and a directory that it may
        // write to. Without it, that is the sound device, or silence where there is none.
        std::vector<std::string> arguments = {};
        OwnersDisk& disk;    // where the songs lie
        int mostSongs = 500; // of one process: libraries lose some memory with each
        // Is told why, when a process has died, or is left as it stands still.
        std::function<void(const std::string& why)> lost = [](const std::string&) {};
    };
    // Tells the owner what is wrong with the sound, each thing once, and each loss of the device.
    using Tell = std::function<void(const std::string& line)>;
    PlayerControl(EventLoop& loop, Player player, Tell tell);
    ~PlayerControl() override;
    PlayerControl(const PlayerControl&) = delete;
    PlayerControl& operator=(const PlayerControl&) = delete;

    void Open(const std::string& fileName) override;
    void Play() override;
    void Pause() override;
    void Stop() override;
    larkspin::PlayState PlayState() override;
    std::optional<std::string> failure() override;
    std::string FileName() override { return fileName_; }
    SongTags tags() override;
    double Duration() override;
    double CurrentPosition() override;
    void setCurrentPosition(double seconds) override;
    void setRate(double rate) override;
    void setVolume(int volume) override;
    void setMute(bool mute) override;
    void setOwnControlsVisible(bool) override {}
    void setSize(int, int) override {}

private:
    void takeFile(std::chrono::milliseconds patience);
    void startProcess(PlayerLine::Sound sound = PlayerLine::Sound::wanted);
    void replaceProcess(const std::string& reason);
    void takeDevice();
    void waitForDevice();
    void goOnSilently();
    bool isHeldByDevice() const;
    void keepPosition();
    void goOnFromPosition();
    bool isHarmed() const;
    void wishNoSong();
    SongPhase listen();
    void take();
    void takeStart();
    void tellOnce(const std::string& line);
    bool isResting() const;
    double reckonedPosition() const;
    void watchEvery(Nanoseconds interval);
    void watch();
    void watchSong();

    EventLoop& loop_;
    Tell tell_;
    std::function<void(const std::string& why)> lost_;
    std::set<std::string> told_;
    PlayerLine line_;
    int mostSongs_;
    DeviceScout scout_;

    // About the current song.
    std::string fileName_;
    SongOpening opening_;
    Nanoseconds openedAt_{};
    bool stopped_ = false;              // by hand
    std::optional<std::string> failed_; // why it failed, whatever its process says
    bool replaced_ = false;             // the process that was to play it
    bool renewed_ = false;              // the process, because a device was lost or found
    bool silenced_ = false;             // since its device stood still
    double duration_ = 0, position_ = 0;
    SongTags tags_;

    // Runs each second while there is a song to watch over.
    TimerId watch_ = TimerId::none;
    Nanoseconds watchedEvery_{}; // 0 for not at all
    Standstill standstill_;
    Handover handover_;
};

} // namespace larkspin
