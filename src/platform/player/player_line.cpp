#include "platform/player/player_line.h"

#include <utility>

namespace larkspin {

namespace {

// Takes as long as the song would sound.
const std::vector<std::string> silence = {"fakesink sync=true"};

} // namespace

bool PlayerLine::start(Sound sound) {
    sound_ = sound;
    begin(PlayerProcess::start(program_, sound == Sound::silent ? silence : arguments_));
    return isUp();
}

void PlayerLine::takeOver(PlayerLine& other) {
    if (isUp())
        end();
    sound_ = other.sound_;
    begin(std::move(other.process_));
    report_ = std::exchange(other.report_, {});
    hadDevice_ = other.hadDevice_;
}

void PlayerLine::begin(std::unique_ptr<PlayerProcess> process) {
    process_ = std::move(process);
    startedAt_ = loop_.now();
    report_ = {};
    hadDevice_ = false;
    firstSong_ = 0;
    songs_ = 0;
    unsaid_ = true;
}

void PlayerLine::end() {
    process_->kill();
    ended_.push_back(std::move(process_));
}

bool PlayerLine::leavesNothing() {
    std::erase_if(ended_, [](const auto& process) { return process->isGone(); });
    return ended_.empty();
}

PlayerWishes& PlayerLine::wish() {
    unsaid_ = true;
    if (turnEnd_ == TimerId::none)
        turnEnd_ = loop_.once(Nanoseconds(0), [this] {
            turnEnd_ = TimerId::none;
            say();
        });
    return wishes_;
}

void PlayerLine::say() {
    // Wishes of a turn that isn't over go together at its end.
    const bool isWhole = turnEnd_ == TimerId::none;
    if (process_ && unsaid_ && isWhole && process_->send(wishes_, file_))
        unsaid_ = false;
}

void PlayerLine::wishSong(Descriptor file) {
    file_ = std::move(file);
    wishSongAgain();
}

void PlayerLine::wishSongAgain() {
    ++wish().song;
    wishes_.hasFile = file_.isOpen();
}

// A process that reports a song which it hasn't been given yet is no player of ours. Songs are
// compared by their difference, since their count may wrap around.
PlayerLine::Heard PlayerLine::hear() {
    if (!process_)
        return Heard::nothing;
    say();
    const auto report = process_->receive();
    const bool isAhead = report && static_cast<std::int32_t>(report->song - wishes_.song) > 0;
    if (process_->isBroken() || isAhead)
        return Heard::end;
    if (!report)
        return Heard::nothing;
    songs_ += report->song != report_.song;
    report_ = *report;
    report_.withoutDevice |= sound_ == Sound::silent;
    hadDevice_ |= report_.start == startSteps && !report_.withoutDevice;
    if (firstSong_ == 0)
        firstSong_ = report_.song;
    return Heard::report;
}

} // namespace larkspin
