// The line to the player: the process at its other end, what is wished of it, and what it has
// reported last. What becomes of a song whose process ends is not decided here.
#pragma once

#include "platform/player/player_process.h"
#include "shell/event_loop.h"

#include <memory>
#include <string>
#include <vector>

namespace larkspin {

class PlayerLine {
public:
    PlayerLine(EventLoop& loop, std::string program, std::vector<std::string> arguments)
        : loop_(loop), program_(std::move(program)), arguments_(std::move(arguments)) {}
    ~PlayerLine() { loop_.cancel(turnEnd_); }
    PlayerLine(const PlayerLine&) = delete;
    PlayerLine& operator=(const PlayerLine&) = delete;

    // Starts a process; false when it can't be. A silent one asks for no device.
    enum class Sound { wanted, silent };
    bool start(Sound sound = Sound::wanted);
    // Goes on with the process of another line, which has had no song yet.
    void takeOver(PlayerLine& other);
    void end(); // ends the process
    bool isUp() const { return process_ != nullptr; }
    Nanoseconds startedAt() const { return startedAt_; }
    bool leavesNothing(); // whether all processes that were ended are gone

    // All wishes of one turn go in one message, so that a song that is moved and paused isn't heard
    // in between.
    const PlayerWishes& wishes() const { return wishes_; }
    PlayerWishes& wish();

    // Wishes another song, of that file, or none; and the same song once more, for another process.
    void wishSong(Descriptor file);
    void wishSongAgain();
    bool hasFile() const { return file_.isOpen(); }

    enum class Heard { nothing, report, end };
    Heard hear(); // the next thing that it has said
    const PlayerReport& report() const { return report_; }
    int songs() const { return songs_; } // that the process has been at
    bool isTaken() const { return report_.song == wishes_.song; }
    bool isFirstSong() const { return firstSong_ == wishes_.song; }
    bool isOpen() const { return isTaken() && report_.phase == SongPhase::open; }
    bool hadDevice() const { return hadDevice_; }           // at some time
    bool isForDevice() const { return arguments_.empty(); } // else its sound goes elsewhere
    // Whether the process is to use one.
    bool usesDevice() const { return isForDevice() && sound_ == Sound::wanted; }
    // Whether the process is about to open a sound device, which a server that hangs holds up.
    bool opensDevice() const { return usesDevice() && isUp() && report_.start == startSteps - 1; }

private:
    void begin(std::unique_ptr<PlayerProcess> process);
    void say();

    EventLoop& loop_;
    std::string program_; // native path
    std::vector<std::string> arguments_;
    PlayerWishes wishes_;
    Descriptor file_;
    bool unsaid_ = false;             // the process hasn't been given the wishes yet
    TimerId turnEnd_ = TimerId::none; // until when more may be wished

    std::unique_ptr<PlayerProcess> process_;
    Nanoseconds startedAt_{};
    Sound sound_ = Sound::wanted;
    bool hadDevice_ = false;
    PlayerReport report_;
    std::uint32_t firstSong_ = 0;
    int songs_ = 0;
    std::vector<std::unique_ptr<PlayerProcess>> ended_; // until nothing is left of them
};

} // namespace larkspin
