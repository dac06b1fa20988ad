#include "platform/player/player_control.h"

#include "library/playlist_row.h"
#include "platform/posix/drive_paths.h"
#include "shell/files.h"
#include "text/visible.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace larkspin {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr Nanoseconds giveUpDelay = 2s; // from Open on, until a failed song reads stopped
constexpr auto usualOpening = 100ms;    // of a file on a disk that answers
constexpr Nanoseconds watchInterval = 1s;
constexpr Nanoseconds longestRest = 60s;
constexpr Nanoseconds leastSilence = 5s; // of a process, before another one may find a device
// A process reports once a second while it plays. When no report comes, its last position is taken
// to run on for this long, and then to stand still.
constexpr std::chrono::duration<double> longestReckoning = 3s;
// In one go: a process that never stops talking must not hold up the program.
constexpr int mostReports = 100;

constexpr const char* hasDied = "the player died";
constexpr const char* stoodStill = "the player stood still";
constexpr const char* noDevice = "larkspin: no sound device, songs play silently";

} // namespace

PlayerControl::PlayerControl(EventLoop& loop, Player player, Tell tell)
    : loop_(loop), tell_(std::move(tell)), lost_(std::move(player.lost)),
      line_(loop, player.program, player.arguments), mostSongs_(player.mostSongs),
      scout_(
          loop, std::move(player.program), std::move(player.arguments), [this] { takeDevice(); },
          [this] { tellOnce(noDevice); }),
      opening_(player.disk),
      handover_(
          loop, line_, [this] { listen(); }, [this] { replaceProcess(stoodStill); }) {}

PlayerControl::~PlayerControl() {
    loop_.cancel(watch_);
}

void PlayerControl::Open(const std::string& fileName) {
    listen();
    if (isResting())
        standstill_.begin();
    fileName_ = fileName;
    duration_ = position_ = 0;
    tags_ = {};
    stopped_ = replaced_ = renewed_ = silenced_ = false;
    failed_.reset();
    openedAt_ = loop_.now();
    wishNoSong(); // nothing of the older one is heard any longer
    line_.wish().playing = true;
    line_.wish().seek = 0;
    line_.wish().title = visibleText(songOfPath(fileName).name, " ");
    const std::string path = nativePath(fileName);
    if (!fileName.empty() && path.empty())
        failed_ = "there is no such drive";
    else if (!fileName.empty() && !opening_.begin(path))
        failed_ = noAnswer;
    // Nearly all files open within this time. Waiting for it here lets the song begin at once,
    // instead of when its state is next asked for.
    takeFile(usualOpening);
    if (line_.isUp() || opening_.isUnderWay())
        watchEvery(watchInterval);
}

void PlayerControl::takeFile(std::chrono::milliseconds patience) {
    auto opened = opening_.result(patience);
    if (!opened)
        return;
    if (!opened->file.isOpen()) {
        failed_ = opened->reason;
        return;
    }
    // After a silent rest, another process may find a device. And none plays too many songs, since
    // libraries lose some memory with each.
    const bool seeksDevice = line_.report().withoutDevice && !scout_.isAtWork() &&
                             loop_.now() - line_.startedAt() >= leastSilence;
    if (line_.isUp() && (seeksDevice || line_.songs() >= mostSongs_))
        line_.end();
    line_.wishSong(std::move(opened->file));
    if (!line_.isUp())
        startProcess();
}

void PlayerControl::Play() {
    line_.wish().playing = true;
}

void PlayerControl::Pause() {
    line_.wish().playing = false;
}

void PlayerControl::Stop() {
    CurrentPosition(); // what is read once it has stopped
    stopped_ = true;
    wishNoSong();
}

PlayState PlayerControl::PlayState() {
    if (fileName_.empty())
        return PlayState::closed;
    if (stopped_)
        return PlayState::stopped;
    const SongPhase phase = listen();
    if (phase == SongPhase::failed)
        return loop_.now() - openedAt_ < giveUpDelay ? PlayState::waiting : PlayState::stopped;
    if (phase == SongPhase::ended)
        return PlayState::stopped;
    const bool stillRests = renewed_ && !line_.wishes().playing; // it was open before
    if (phase == SongPhase::opening && !stillRests)
        return PlayState::waiting;
    return line_.wishes().playing ? PlayState::playing : PlayState::paused;
}

std::optional<std::string> PlayerControl::failure() {
    if (stopped_ || PlayState() != PlayState::stopped || listen() != SongPhase::failed)
        return std::nullopt;
    return failed_ ? *failed_ : wordsOf(line_.report().fault);
}

SongTags PlayerControl::tags() {
    listen();
    return tags_;
}

double PlayerControl::Duration() {
    listen();
    return duration_;
}

double PlayerControl::CurrentPosition() {
    if (stopped_ || fileName_.empty())
        return position_;
    const SongPhase phase = listen();
    if (phase == SongPhase::open && line_.report().seek == line_.wishes().seek &&
        !line_.report().moving)
        position_ = reckonedPosition();
    else if (phase == SongPhase::ended)
        position_ = duration_;
    return position_;
}

void PlayerControl::setCurrentPosition(double seconds) {
    if (fileName_.empty() || stopped_ || !std::isfinite(seconds))
        return;
    const SongPhase phase = listen();
    if (phase == SongPhase::ended || phase == SongPhase::failed)
        return;
    position_ = std::clamp(seconds, 0.0, longestTime);
    if (duration_ > 0)
        position_ = std::min(position_, duration_);
    line_.wish().seekTo = position_;
    ++line_.wish().seek;
}

void PlayerControl::setRate(double rate) {
    if (!(rate > 0) || !std::isfinite(rate))
        return;
    line_.wish().rate = std::clamp(rate, lowestRate, highestRate);
}

void PlayerControl::setVolume(int volume) {
    // The volume is given in hundredths of a decibel and the player takes an amplitude.
    line_.wish().volume = std::pow(10.0, std::min(volume, 0) / 2000.0);
}

void PlayerControl::setMute(bool mute) {
    line_.wish().mute = mute;
}

void PlayerControl::startProcess(PlayerLine::Sound sound) {
    standstill_.begin();
    if (line_.start(sound))
        return;
    failed_ = "the player can't be started";
    tellOnce("larkspin: the player can't be started, songs don't play");
}

// An interval of 0 stops the watch. A resting player wakes the program up only once, when its rest
// is over.
void PlayerControl::watchEvery(Nanoseconds interval) {
    if (interval == watchedEvery_)
        return;
    loop_.cancel(std::exchange(watch_, TimerId::none));
    watchedEvery_ = interval;
    if (interval > 0s)
        watch_ = loop_.every(interval, [this] { watch(); });
}

void PlayerControl::replaceProcess(const std::string& reason) {
    lost_(reason);
    const bool harmed = isHarmed();
    line_.end();
    if (isResting() || !line_.hasFile())
        return;
    if (harmed && !std::exchange(replaced_, true))
        startProcess();
    else
        failed_ = reason;
}

// Whether the song isn't to blame for what became of its process, since it wasn't begun, or never
// got going after others. It then gets another process.
bool PlayerControl::isHarmed() const {
    const bool hasMoved = line_.isOpen() && line_.report().position > 0;
    return !line_.isTaken() || (!line_.isFirstSong() && !hasMoved);
}

// Only another process can open a device again, since the old one is confined. The song goes on
// there. One that has ended meanwhile stays with the process that knows of that.
void PlayerControl::takeDevice() {
    listen();
    if (isResting()) {
        scout_.end();
        return;
    }
    keepPosition();
    line_.takeOver(scout_.line());
    if (line_.hasFile())
        goOnFromPosition();
}

// A sound server that hangs holds up whoever opens a device, or plays to it. Songs are played
// silently until it answers.
void PlayerControl::waitForDevice() {
    scout_.begin(line_);
    startProcess(PlayerLine::Sound::silent);
}

void PlayerControl::goOnSilently() {
    lost_(stoodStill);
    silenced_ = true;
    keepPosition();
    line_.end();
    goOnFromPosition();
    startProcess(PlayerLine::Sound::silent);
    scout_.begin();
}

// Whether the device may be what the song is held up by: it has begun to sound there.
bool PlayerControl::isHeldByDevice() const {
    return line_.usesDevice() && line_.isOpen() && line_.report().position > 0 && !silenced_;
}

void PlayerControl::keepPosition() {
    if (line_.isOpen() && line_.report().seek == line_.wishes().seek)
        position_ = reckonedPosition(); // else it is where it is to be set to
}

void PlayerControl::goOnFromPosition() {
    renewed_ = true;
    line_.wishSongAgain();
    line_.wish().seekTo = position_;
    ++line_.wish().seek;
    standstill_.begin();
}

void PlayerControl::wishNoSong() {
    opening_.drop();
    line_.wishSong({});
    handover_.begin();
}

// How far the song is, after everything that the process has said until now.
SongPhase PlayerControl::listen() {
    takeFile(0ms);
    for (int count = 0; count < mostReports; ++count) {
        const auto heard = line_.hear();
        if (heard == PlayerLine::Heard::nothing)
            break;
        if (heard == PlayerLine::Heard::end)
            replaceProcess(hasDied);
        else
            take();
    }
    if (failed_)
        return SongPhase::failed;
    return line_.isTaken() && !opening_.isUnderWay() ? line_.report().phase : SongPhase::opening;
}

void PlayerControl::take() {
    takeStart();
    if (!line_.isTaken() || stopped_)
        return;
    // A process that has just taken the song over knows none of them yet.
    if (const SongTags& told = line_.report().tags; told != SongTags())
        tags_ = {visibleText(told.title, " "), visibleText(told.artist, " "),
                 visibleText(told.album, " ")};
    if (line_.report().duration <= 0)
        return;
    duration_ = line_.report().duration;
    position_ = std::min(position_, duration_); // a seek may have come before the length was known
}

// Takes over what the process has found out at its start, and what it has lost since.
void PlayerControl::takeStart() {
    if (line_.report().start < startSteps)
        return;
    if (!line_.report().confined)
        tellOnce("larkspin: this system can't confine the player, a hostile song could reach your "
                 "files");
    if (!line_.report().withoutDevice) {
        if (line_.isOpen()) {
            scout_.end();
            told_.erase(noDevice); // the next loss is another one
        }
        return;
    }
    if (line_.isForDevice())
        scout_.begin();
    // There may be another one in place of one that was lost: the scout finds that out.
    if (!line_.isForDevice() || !line_.hadDevice())
        tellOnce(noDevice);
}

void PlayerControl::tellOnce(const std::string& line) {
    if (told_.insert(line).second)
        tell_(line);
}

bool PlayerControl::isResting() const {
    const SongPhase phase = line_.report().phase;
    const bool over = phase == SongPhase::ended || phase == SongPhase::failed;
    return fileName_.empty() || stopped_ || failed_ ||
           (line_.isTaken() && over && !opening_.isUnderWay());
}

double PlayerControl::reckonedPosition() const {
    const PlayerReport& report = line_.report();
    double position = report.position;
    if (report.advancing) {
        const std::chrono::duration<double> passed = Clock::now() - report.at;
        position += std::min(passed, longestReckoning).count() * report.rate;
    }
    return duration_ > 0 ? std::min(position, duration_) : position;
}

void PlayerControl::watch() {
    listen();
    if (isResting())
        scout_.end();
    // After a look that came at the end of a whole rest, the process is no longer worth its memory.
    const bool rested = watchedEvery_ == longestRest;
    if (!isResting())
        watchSong();
    else if (line_.isUp() && rested)
        line_.end();
    // Processes and workers that were ended are looked after until nothing is left of them.
    const bool leavesNothing =
        line_.leavesNothing() && scout_.leavesNothing() && opening_.leavesNothing();
    if (!leavesNothing || !isResting())
        watchEvery(watchInterval);
    else
        watchEvery(line_.isUp() ? longestRest : 0s);
}

// A sound server, a disk or a decoder that stands still must not keep a list from moving on.
void PlayerControl::watchSong() {
    using Patience = Standstill::Patience;
    const bool unheard = line_.isUp() && line_.report().start == 0;
    const bool doubtful = line_.isUp() && line_.isTaken() && isHarmed() && !replaced_;
    const Patience patience = unheard                           ? Patience::starting
                              : doubtful || line_.opensDevice() ? Patience::suspicious
                                                                : Patience::usual;
    if (line_.isOpen() && !line_.wishes().playing) { // paused
        standstill_.begin();
    } else if (!standstill_.isReached(line_.report(), patience)) {
        return;
    } else if (opening_.isUnderWay()) {
        opening_.giveUp();
        failed_ = noAnswer;
    } else if (line_.opensDevice()) {
        waitForDevice();
    } else if (isHeldByDevice()) {
        goOnSilently();
    } else if (line_.isUp()) {
        replaceProcess(stoodStill);
    }
}

} // namespace larkspin
