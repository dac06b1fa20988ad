// The media control in front of a player process. The process is started by the first song,
// ended after a minute of rest, and replaced when it dies or stands still: the song it had in
// hand can't be played then, and nothing else is lost.
#pragma once

#include "platform/player/player_process.h"
#include "playback/media_control.h"
#include "shell/event_loop.h"

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace larkspin {

// The player's executable, which lies beside that of this process.
std::string playerBeside();

class PlayerControl : public MediaControl {
public:
    struct Player {
        std::string program; // native path
        // Where the sound goes, as GStreamer's launch lines say it, and a directory that it may
        // write to. Without it, that is the sound device, or silence where there is none.
        std::vector<std::string> arguments;
    };
    // Of what is wrong with the sound, the owner is told once, through `tell`.
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
    bool wasGivenUp() override;
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
    void startProcess();
    void endProcess();
    void replaceProcess();
    void wish();
    void say();
    void dropSong();
    SongPhase listen();
    void take(const PlayerReport& report);
    void tellOnce(const std::string& line);
    bool isTaken() const { return report_.song == wishes_.song; }
    bool isResting() const;
    double reckonedPosition() const;
    void watchEvery(Nanoseconds interval);
    void watch();
    void watchSong();

    EventLoop& loop_;
    Player player_;
    Tell tell_;
    std::set<std::string> told_;
    std::unique_ptr<PlayerProcess> process_;
    std::vector<std::unique_ptr<PlayerProcess>> killed_; // until nothing is left of them
    PlayerWishes wishes_;
    bool unsaid_ = false;             // the process hasn't been given the wishes yet
    TimerId turnEnd_ = TimerId::none; // until when more may be wished
    PlayerReport report_;             // of this process

    std::string fileName_;
    Nanoseconds openedAt_{};
    bool stopped_ = false;  // by hand
    bool failed_ = false;   // because of its process
    bool replaced_ = false; // the process that was to play it
    double duration_ = 0, position_ = 0;

    // Each second while a song is in hand.
    TimerId watch_ = TimerId::none;
    Nanoseconds watchedEvery_{}; // 0 for not at all
    PlayerReport watched_;
    int standstill_ = 0; // rounds
};

} // namespace larkspin
