#include "platform/posix/owners_disk.h"

#include "platform/posix/far_disks.h"
#include "platform/posix/loop_parts.h"
#include "platform/posix/watching_loop.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace larkspin {

namespace {

using namespace std::chrono_literals;

constexpr std::size_t mostIdle = 2;
constexpr std::size_t mostHung = 8; // then nobody is asked
constexpr Nanoseconds untilNextTry = 60s;
// An answer that comes so soon isn't worth the events.
constexpr auto blink = 2ms;

// Calls back nothing: what can be read wakes the loop up.
class Watched {
public:
    Watched(WatchingLoop& loop, const DiskWorker& worker)
        : loop_(loop), channel_(worker.channel()) {
        loop_.watch(channel_, [] {});
    }
    ~Watched() { loop_.unwatch(channel_); }
    Watched(const Watched&) = delete;
    Watched& operator=(const Watched&) = delete;

private:
    WatchingLoop& loop_;
    int channel_;
};

bool isWithin(const std::string& path, const std::string& directory) {
    return path.starts_with(directory) &&
           (path.size() == directory.size() || directory.ends_with('/') ||
            path[directory.size()] == '/');
}

std::string directoryAbove(const std::string& path) {
    return path.substr(0, std::max<std::size_t>(path.rfind('/'), 1));
}

} // namespace

OwnersDisk::OwnersDisk(DiskWorker::Answer answer) : answer_(std::move(answer)) {
    giveBack(borrow());
}

OwnersDisk::~OwnersDisk() = default;

std::unique_ptr<DiskWorker> OwnersDisk::borrow() {
    std::erase_if(ended_, [](const auto& worker) { return worker->isGone(); });
    if (idle_.empty())
        return DiskWorker::start(answer_);
    auto worker = std::move(idle_.back());
    idle_.pop_back();
    return worker;
}

void OwnersDisk::giveBack(std::unique_ptr<DiskWorker> worker) {
    if (!worker)
        return;
    if (worker->isBroken() || idle_.size() >= mostIdle)
        end(std::move(worker));
    else
        idle_.push_back(std::move(worker));
}

void OwnersDisk::end(std::unique_ptr<DiskWorker> worker) {
    worker->kill();
    ended_.push_back(std::move(worker));
}

std::optional<std::string> OwnersDisk::ask(std::string_view question, const std::string& path) {
    if (isHung(path))
        return std::nullopt;
    for (int tries = 0; tries < 2; ++tries) { // one that was idle may have died long ago
        std::unique_ptr<DiskWorker> worker = borrow();
        if (!worker)
            return answerHere(question).text;
        worker->send(question);
        std::string answer;
        const Wait wait = await(*worker, answer);
        if (wait == Wait::hung) {
            hasHung(std::move(worker), path);
            return std::nullopt;
        }
        giveBack(std::move(worker));
        if (wait == Wait::answered)
            return answer;
    }
    return std::nullopt;
}

OwnersDisk::Wait OwnersDisk::await(DiskWorker& worker, std::string& answer, Nanoseconds nap) {
    const Nanoseconds begin = steadyTime();
    bool answered = false;
    const auto isOver = [&] {
        if (auto came = answered ? std::nullopt : worker.receive()) {
            answer = std::move(came->text);
            answered = true;
        }
        return answered || worker.isBroken();
    };
    if (!isOver())
        std::this_thread::sleep_for(nap);
    if (!isOver())
        worker.waitForNews(blink);
    while (!isOver() && steadyTime() < begin + bound_) {
        if (loop_)
            serveEvents(worker, isOver, begin + bound_);
        else
            worker.waitForNews(blink);
    }
    if (isOver())
        return answered ? Wait::answered : Wait::died;
    return Wait::hung;
}

// In short spans: a long question goes in pieces, and too deep in handlers the loop sees nothing.
void OwnersDisk::serveEvents(const DiskWorker& worker, const std::function<bool()>& isOver,
                             Nanoseconds latest) {
    const Watched watched(*loop_, worker);
    const Nanoseconds span = worker.hasUnsent() ? 1ms : 50ms;
    loop_->waitFor(isOver, std::min(latest, steadyTime() + span));
}

void OwnersDisk::hasHung(std::unique_ptr<DiskWorker> worker, const std::string& path) {
    std::string place = placeOf(path);
    std::erase_if(hung_, [&](Hung& other) {
        if (!isWithin(other.place, place))
            return false;
        end(std::move(other.worker));
        return true;
    });
    hung_.push_back({std::move(worker), std::move(place), steadyTime()});
}

// A link can lead to such a disk from anywhere: two directories side by side that hang stand for
// the one above them.
std::string OwnersDisk::placeOf(const std::string& path) const {
    const std::string disk = farDiskOf(path);
    if (!disk.empty())
        return disk;
    const std::string above = directoryAbove(path);
    const bool isSecond = std::ranges::any_of(
        hung_, [&](const Hung& other) { return directoryAbove(other.place) == above; });
    return isSecond && above != "/" ? above : path;
}

bool OwnersDisk::isHung(const std::string& path) {
    lookAfterHung();
    return hung_.size() >= mostHung ||
           std::ranges::any_of(hung_, [&](const Hung& hung) { return isWithin(path, hung.place); });
}

void OwnersDisk::lookAfterHung() {
    std::erase_if(hung_, [this](Hung& hung) {
        const bool isFree = hung.worker->receive() || hung.worker->isBroken();
        if (!isFree && steadyTime() < hung.since + untilNextTry)
            return false;
        end(std::move(hung.worker));
        return true;
    });
}

} // namespace larkspin
