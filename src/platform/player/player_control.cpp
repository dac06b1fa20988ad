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
constexpr auto usualOpening = 100ms;    // of a file on a disk that answers
constexpr Nanoseconds watchInterval = 1s;
constexpr Nanoseconds longestRest = 60s;
constexpr Nanoseconds deviceInterval = 60s; // between two looks for a sound device
// How long the end of one song may keep the next one waiting. Rounds are counted for the same
// reason as those of a standstill.
constexpr Nanoseconds handoverInterval = 250ms;
constexpr int handoverLimit = 4;
// A process reports once a second while it plays; one that doesn't isn't believed much longer.
constexpr std::chrono::duration<double> longestReckoning = 3s;
constexpr int mostReports = 100; // at once

constexpr const char* diskIsGone = "the disk doesn't answer";
constexpr const char* hasDied = "the player died";
constexpr const char* stoodStill = "the player stood still";

} // namespace

std::string playerBeside() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error).parent_path() / "larkspin-player";
}

PlayerControl::PlayerControl(EventLoop& loop, Player player, Tell tell)
    : loop_(loop), player_(std::move(player)), tell_(std::move(tell)), opening_(player_.open) {}

PlayerControl::~PlayerControl() {
    for (const TimerId timer : {watch_, turnEnd_, handover_})
        loop_.cancel(timer);
}

void PlayerControl::Open(const std::string& fileName) {
    listen();
    if (isResting())
        standstill_.begin();
    fileName_ = fileName;
    duration_ = position_ = 0;
    stopped_ = replaced_ = renewed_ = false;
    failed_.reset();
    openedAt_ = loop_.now();
    file_ = {};
    opening_.drop();
    wishes_.playing = true;
    wishes_.seek = 0;
    const std::string path = nativePath(fileName);
    if (!fileName.empty() && path.empty()) // names no file
        failed_ = "";
    else if (!fileName.empty() && !opening_.begin(path))
        failed_ = diskIsGone;
    takeFile(usualOpening);
    if (!file_.isOpen())
        wishSong(false); // nothing of the older one is heard any longer
    if (process_ || opening_.isUnderWay())
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
    file_ = std::move(opened->file);
    const bool seeksDevice = report_.withoutDevice && loop_.now() - startedAt_ >= deviceInterval;
    if (process_ && seeksDevice)
        endProcess();
    if (!process_)
        startProcess();
    wishSong(true);
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
    opening_.drop();
    file_ = {};
    wishSong(false);
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

std::optional<std::string> PlayerControl::failure() {
    if (stopped_ || PlayState() != PlayState::stopped || listen() != SongPhase::failed)
        return std::nullopt;
    return failed_.value_or("");
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
    position_ = std::clamp(seconds, 0.0, longestTime);
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
    report_ = {};
    firstSong_ = 0;
    hadDevice_ = false;
    startedAt_ = loop_.now();
    standstill_.beginProcess();
    unsaid_ = true;
    if (!process_) {
        failed_ = "";
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

void PlayerControl::replaceProcess(const std::string& reason) {
    const bool harmed = isHarmed();
    endProcess();
    if (isResting() || !file_.isOpen())
        return;
    if (harmed && !std::exchange(replaced_, true))
        startProcess();
    else
        failed_ = reason;
}

// The song isn't to blame for what became of its process: it wasn't begun, or it never got going
// behind others. It gets another process.
bool PlayerControl::isHarmed() const {
    return !isTaken() || (firstSong_ != wishes_.song && !hasMoved());
}

// A device that is lost can only be opened anew by another process. The song goes on there.
void PlayerControl::renewProcess() {
    renewed_ = true;
    wishes_.seekTo = position_ = reckonedPosition();
    wishes_.seek = 1;
    endProcess();
    startProcess();
    wishSong(true);
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
    if (process_ && unsaid_ && isWhole && process_->send(wishes_, file_))
        unsaid_ = false;
}

// Another song, or none.
void PlayerControl::wishSong(bool hasFile) {
    ++wishes_.song;
    wishes_.hasFile = hasFile;
    wish();
    if (!process_ || report_.song == 0 || handover_ != TimerId::none)
        return;
    olderSong_ = report_.song;
    handoverRounds_ = 0;
    handover_ = loop_.every(handoverInterval, [this] { watchHandover(); });
}

// How far the song is, with all that the process has said meanwhile.
SongPhase PlayerControl::listen() {
    takeFile(0ms);
    for (int count = 0; process_ && count < mostReports; ++count) {
        say();
        const auto report = process_->receive();
        if (process_->isBroken() || (report && !take(*report)))
            replaceProcess(hasDied);
        else if (!report)
            break;
    }
    if (failed_)
        return SongPhase::failed;
    return isTaken() && !opening_.isUnderWay() ? report_.phase : SongPhase::opening;
}

// False for one of a song that it can't know of.
bool PlayerControl::take(const PlayerReport& report) {
    if (static_cast<std::int32_t>(report.song - wishes_.song) > 0)
        return false;
    report_ = report;
    if (firstSong_ == 0)
        firstSong_ = report.song;
    takeStart();
    if (!isTaken() || report.duration <= 0 || stopped_)
        return true;
    duration_ = report.duration;
    position_ = std::min(position_, duration_); // of a seek before the length was known
    return true;
}

// What it found, or has lost since.
void PlayerControl::takeStart() {
    if (report_.start < startSteps)
        return;
    if (!report_.confined)
        tellOnce("larkspin: this system can't confine the player, a hostile song could reach your "
                 "files");
    const bool isOpen = isTaken() && report_.phase == SongPhase::open && file_.isOpen();
    if (!report_.withoutDevice)
        hadDevice_ |= isOpen;
    else if (hadDevice_ && isOpen && !renewed_)
        renewProcess();
    else
        tellOnce("larkspin: no sound device, songs play silently");
}

void PlayerControl::tellOnce(const std::string& line) {
    if (told_.insert(line).second)
        tell_(line);
}

bool PlayerControl::isResting() const {
    const bool over = report_.phase == SongPhase::ended || report_.phase == SongPhase::failed;
    return fileName_.empty() || stopped_ || failed_ ||
           (isTaken() && over && !opening_.isUnderWay());
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
    if (!isResting())
        watchSong();
    else if (process_ && rested)
        endProcess();
    if (!killed_.empty() || !isResting())
        watchEvery(watchInterval);
    else
        watchEvery(process_ ? longestRest : 0s);
}

// A sound server, a disk or a decoder that stands still must not keep a list from moving on.
void PlayerControl::watchSong() {
    using Patience = Standstill::Patience;
    const bool paused = isTaken() && report_.phase == SongPhase::open && !wishes_.playing;
    const bool unheard = process_ && report_.start == 0;
    const bool doubtful = process_ && isTaken() && isHarmed() && !replaced_;
    const Patience patience = unheard    ? Patience::starting
                              : doubtful ? Patience::suspicious
                                         : Patience::usual;
    if (paused) {
        standstill_.begin();
    } else if (!standstill_.isReached(report_, patience)) {
        return;
    } else if (opening_.isUnderWay()) {
        opening_.drop();
        failed_ = diskIsGone;
    } else if (process_) {
        replaceProcess(stoodStill);
    }
}

// A song that the process is not through with is left to it.
void PlayerControl::watchHandover() {
    listen();
    const bool isBehind = process_ && report_.song != 0 && !isTaken();
    if (isBehind && report_.song != olderSong_) {
        olderSong_ = report_.song;
        handoverRounds_ = 0;
    }
    if (isBehind && ++handoverRounds_ < handoverLimit)
        return;
    loop_.cancel(std::exchange(handover_, TimerId::none));
    if (isBehind)
        replaceProcess(stoodStill);
}

} // namespace larkspin
