#include "platform/player/song_opening.h"

#include "platform/posix/disk_questions.h"
#include "platform/posix/loop_parts.h"
#include "shell/files.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

constexpr std::size_t mostAsked = 8; // directories at once
constexpr int mostTries = 2;         // an idle worker may have died unnoticed

} // namespace

bool SongOpening::begin(const std::string& path) {
    directory_ = path.substr(0, path.rfind('/'));
    question_ = put(DiskQuestion::open, path);
    tries_ = 0;
    // A directory has one worker, which is asked for the next song even if the one before is still
    // unanswered.
    if (disk_.isHung(directory_) || (!wantedOne() && asked_.size() >= mostAsked))
        return false;
    isWanted_ = true;
    ask();
    return true;
}

SongOpening::Asked* SongOpening::wantedOne() {
    const auto found = std::ranges::find(asked_, directory_, &Asked::directory);
    return found == asked_.end() ? nullptr : &*found;
}

void SongOpening::ask() {
    if (tries_++ == mostTries) {
        opened_ = OpenedFile{{}, noAnswer};
        return;
    }
    if (!wantedOne()) {
        auto worker = disk_.borrow();
        if (!worker) {
            opened_ = openedFileIn(disk_.answerHere(question_));
            return;
        }
        asked_.push_back({std::move(worker), directory_, steadyTime()});
    }
    wantedOne()->worker->send(question_);
    ++wantedOne()->unanswered;
}

// Takes in the answers that have come. The wanted file is the last that its worker was asked for.
void SongOpening::hear() {
    std::erase_if(asked_, [this](Asked& asked) { return isDone(asked); });
    if (isWanted_ && !opened_ && !wantedOne())
        ask();
}

bool SongOpening::isDone(Asked& asked) {
    const bool isWanted = isWanted_ && asked.directory == directory_;
    while (asked.unanswered > 0) {
        auto answer = asked.worker->receive();
        if (!answer)
            break;
        asked.since = steadyTime();
        if (--asked.unanswered == 0 && isWanted)
            opened_ = openedFileIn(std::move(*answer));
    }
    // Nobody waits for a file that isn't wanted any more. It gets as long as any other question.
    const bool isLate = !isWanted && steadyTime() >= asked.since + OwnersDisk::longestAnswer;
    if (asked.unanswered > 0 && !asked.worker->isBroken() && !isLate)
        return false;
    if (asked.unanswered == 0)
        disk_.giveBack(std::move(asked.worker));
    else if (isLate)
        disk_.hasHung(std::move(asked.worker), asked.directory);
    else
        disk_.end(std::move(asked.worker));
    return true;
}

void SongOpening::giveUp() {
    if (Asked* const asked = isWanted_ ? wantedOne() : nullptr) {
        disk_.hasHung(std::move(asked->worker), directory_);
        asked_.erase(asked_.begin() + (asked - asked_.data()));
    }
    drop();
}

bool SongOpening::leavesNothing() {
    hear();
    return asked_.empty();
}

std::optional<OpenedFile> SongOpening::result(std::chrono::milliseconds patience) {
    const Nanoseconds latest = steadyTime() + patience;
    hear();
    while (isWanted_ && !opened_ && steadyTime() < latest) {
        wantedOne()->worker->waitForNews(
            std::chrono::ceil<std::chrono::milliseconds>(latest - steadyTime()));
        hear();
    }
    if (!isWanted_ || !opened_)
        return std::nullopt;
    isWanted_ = false;
    return std::exchange(opened_, std::nullopt);
}

} // namespace larkspin
