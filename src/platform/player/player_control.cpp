#include "platform/player/player_control.h"

#include "platform/posix/drive_paths.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <utility>

namespace larkspin {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr Nanoseconds giveUpDelay = 2s; // from Open on, for a file that can't be played
constexpr Nanoseconds watchInterval = 1s;
constexpr Nanoseconds longestRest = 60s;
// Rounds of the watch. They are counted instead of time, since the whole program may have been
// halted in between. A process that has played before takes a song at once.
constexpr int standstillLimit = 20;
constexpr int takingLimit = 5;
// A process reports once a second while it plays; one that doesn't isn't believed much longer.
constexpr std::chrono::duration<double> longestReckoning = 3s;
constexpr int mostReports = 100; // at once

} // namespace

std::string playerBeside() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).parent_path() / "larkspin-player";
}

PlayerControl::PlayerControl(EventLoop& loop, Player player, Tell tell)
    : loop_(loop), player_(std::move(player)), tell_(std::move(tell)) {}

PlayerControl::~PlayerControl() {
    loop_.cancel(watch_);
    loop_.cancel(turnEnd_);
}

void PlayerControl::Open(const std::string& fileName) {
    fileName_ = fileName;
    duration_ = position_ = 0;
    stopped_ = failed_ = replaced_ = false;
    openedAt_ = loop_.now();
    standstill_ = 0;
    if (fileName.empty()) {
        dropSong();
        return;
    }
    ++wishes_.song;
    wishes_.path = nativePath(fileName);
    wishes_.playing = true;
    wishes_.seek = 0;
    if (wishes_.path.empty()) { // names no file: to the process, it would be no song
        wish();
        failed_ = true;
        return;
    }
    if (!process_)
        startProcess();
    wish();
    if (process_)
        watchEvery(watchInterval);
}

void PlayerControl::Play() {
    wishes_.playing = true;
    wish();
}

void PlayerControl::Pause() {
    wishes_.playing = false;
    wish();
}

void PlayerControl::Stop() {
    CurrentPosition(); // what is read once it has stopped
    stopped_ = true;
    dropSong();
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
    if (phase == SongPhase::opening)
        return PlayState::waiting;
    return wishes_.playing ? PlayState::playing : PlayState::paused;
}

bool PlayerControl::wasGivenUp() {
    return !stopped_ && PlayState() == PlayState::stopped && listen() == SongPhase::failed;
}

double PlayerControl::Duration() {
    listen();
    return duration_;
}

double PlayerControl::CurrentPosition() {
    if (stopped_ || fileName_.empty())
        return position_;
    const SongPhase phase = listen();
    if (phase == SongPhase::open && report_.seek == wishes_.seek && !report_.moving)
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
    position_ = std::max(seconds, 0.0);
    if (duration_ > 0)
        position_ = std::min(position_, duration_);
    wishes_.seekTo = position_;
    ++wishes_.seek;
    wish();
}

void PlayerControl::setRate(double rate) {
    if (!(rate > 0) || !std::isfinite(rate))
        return;
    wishes_.rate = std::clamp(rate, lowestRate, highestRate);
    wish();
}

void PlayerControl::setVolume(int volume) {
    wishes_.volume = std::pow(10.0, std::min(volume, 0) / 2000.0);
    wish();
}

void PlayerControl::setMute(bool mute) {
    wishes_.mute = mute;
    wish();
}

void PlayerControl::startProcess() {
    process_ = PlayerProcess::start(player_.program, player_.arguments);
    report_ = watched_ = {};
    standstill_ = 0;
    unsaid_ = true;
    if (!process_) {
        failed_ = true;
        tellOnce("larkspin: the player can't be started, songs don't play");
    }
}

// At rest nothing wakes the program up but the rest's end.
void PlayerControl::watchEvery(Nanoseconds interval) {
    if (interval == watchedEvery_)
        return;
    loop_.cancel(std::exchange(watch_, TimerId::none));
    watchedEvery_ = interval;
    if (interval > 0s)
        watch_ = loop_.every(interval, [this] { watch(); });
}

void PlayerControl::endProcess() {
    process_->kill();
    killed_.push_back(std::move(process_));
}

// A song that the process hadn't begun isn't to blame, and gets another one.
void PlayerControl::replaceProcess() {
    const bool begun = isTaken();
    endProcess();
    if (isResting())
        return;
    if (begun || std::exchange(replaced_, true))
        failed_ = true;
    else
        startProcess();
}

// What is wished in one turn goes as one message: of a song that is set elsewhere and halted,
// nothing is to be heard in between.
void PlayerControl::wish() {
    unsaid_ = true;
    if (turnEnd_ != TimerId::none)
        return;
    turnEnd_ = loop_.once(0s, [this] {
        turnEnd_ = TimerId::none;
        say();
    });
}

void PlayerControl::say() {
    const bool isWhole = turnEnd_ == TimerId::none;
    if (process_ && unsaid_ && isWhole && process_->send(wishes_))
        unsaid_ = false;
}

void PlayerControl::dropSong() {
    ++wishes_.song;
    wishes_.path.clear();
    wish();
}

// How far the song is, with all that the process has said meanwhile.
SongPhase PlayerControl::listen() {
    for (int count = 0; process_ && count < mostReports; ++count) {
        say();
        const auto report = process_->receive();
        if (report)
            take(*report);
        else if (process_->isBroken())
            replaceProcess();
        else
            break;
    }
    if (failed_)
        return SongPhase::failed;
    return isTaken() ? report_.phase : SongPhase::opening;
}

void PlayerControl::take(const PlayerReport& report) {
    report_ = report;
    if (report.withoutDevice)
        tellOnce("larkspin: no sound device, songs play silently");
    if (!isTaken() || report.duration <= 0 || stopped_)
        return;
    duration_ = report.duration;
    position_ = std::min(position_, duration_); // of a seek before the length was known
}

void PlayerControl::tellOnce(const std::string& line) {
    if (told_.insert(line).second)
        tell_(line);
}

bool PlayerControl::isResting() const {
    const bool over = report_.phase == SongPhase::ended || report_.phase == SongPhase::failed;
    return fileName_.empty() || stopped_ || failed_ || (isTaken() && over);
}

double PlayerControl::reckonedPosition() const {
    double position = report_.position;
    if (report_.advancing) {
        const std::chrono::duration<double> passed = Clock::now() - report_.at;
        position += std::min(passed, longestReckoning).count() * report_.rate;
    }
    return duration_ > 0 ? std::min(position, duration_) : position;
}

void PlayerControl::watch() {
    listen();
    const bool rested = watchedEvery_ == longestRest;
    std::erase_if(killed_, [](const auto& process) { return process->isGone(); });
    if (process_ && !isResting())
        watchSong();
    else if (process_ && rested)
        endProcess();
    if (!killed_.empty() || (process_ && !isResting()))
        watchEvery(watchInterval);
    else
        watchEvery(process_ ? longestRest : 0s);
}

// A sound server, a disk or a decoder that stands still must not keep a list from moving on.
void PlayerControl::watchSong() {
    const bool paused = isTaken() && report_.phase == SongPhase::open && !wishes_.playing;
    const bool moves = report_.position != watched_.position || report_.phase != watched_.phase ||
                       report_.song != watched_.song;
    const bool known = report_.at != Clock::time_point();
    watched_ = report_;
    standstill_ = moves || paused ? 0 : standstill_ + 1;
    if (standstill_ >= (known && !isTaken() ? takingLimit : standstillLimit))
        replaceProcess();
}

} // namespace larkspin
