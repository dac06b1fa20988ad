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
constexpr std::size_t mostHung = 8; // hung workers; with so many, no disk is asked any more
constexpr Nanoseconds untilNextTry = 60s;
// An answer that comes within this time is waited for without serving events.
constexpr auto blink = 2ms;

// Makes the worker's answer wake the loop up. The callback has nothing to do, since `await` looks
// by itself.
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
    // Workers that were killed are looked at now and then until nothing is left of them: one that
    // hangs in the kernel dies only when its disk lets it.
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
    for (int tries = 0; tries < 2; ++tries) { // an idle worker may have died unnoticed
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
    // Nearly all answers come at once. So a nap lets several come together, then a blink is waited
    // without events, and only a slow disk is waited for with events served.
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

// Serves events for a short span only. A long question has to be sent in pieces, and where handlers
// are nested too deep the loop doesn't look at the worker.
void OwnersDisk::serveEvents(const DiskWorker& worker, const std::function<bool()>& isOver,
                             Nanoseconds latest) {
    const Watched watched(*loop_, worker);
    const Nanoseconds span = worker.hasUnsent() ? 1ms : 50ms;
    loop_->waitFor(isOver, std::min(latest, steadyTime() + span));
}

void OwnersDisk::hasHung(std::unique_ptr<DiskWorker> worker, const std::string& path) {
    std::string place = placeOf(path);
    // A larger place that hangs stands for all that hang within it.
    std::erase_if(hung_, [&](Hung& other) {
        if (!isWithin(other.place, place))
            return false;
        end(std::move(other.worker));
        return true;
    });
    hung_.push_back({std::move(worker), std::move(place), steadyTime()});
}

// What counts as hung together with the path: on a far disk, all of that disk. But a link can lead
// to such a disk from anywhere, so when two directories side by side hang, the one above them
// counts.
std::string OwnersDisk::placeOf(const std::string& path) const {
    std::string disk = farDiskOf(path);
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
        // A worker that has answered after all shows that the disk is back.
        const bool isFree = hung.worker->receive() || hung.worker->isBroken();
        if (!isFree && steadyTime() < hung.since + untilNextTry)
            return false;
        end(std::move(hung.worker));
        return true;
    });
}

} // namespace larkspin
