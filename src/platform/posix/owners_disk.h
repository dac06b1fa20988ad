// Where the owner's songs lie, a disk may hang for a minute or for ever, and with it whoever asks.
// So it is asked by workers, processes of their own. The program waits for them within a bound and
// serves events meanwhile, if the answer takes longer than a blink.
//
// What has hung isn't asked again until it has answered after all, or a while has passed: what lies
// in the same directory, or on the same disk where that is one far away, counts as unanswered at
// once.
#pragma once

#include "platform/posix/disk_worker.h"
#include "shell/event_loop.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace larkspin {

class WatchingLoop;

class OwnersDisk {
public:
    static constexpr auto longestAnswer = std::chrono::seconds(10); // a disk at rest spins up first

    // The first worker is forked at once: best before there are threads.
    explicit OwnersDisk(DiskWorker::Answer answer);
    ~OwnersDisk();
    OwnersDisk(const OwnersDisk&) = delete;
    OwnersDisk& operator=(const OwnersDisk&) = delete;

    // How long it may take, from now on, also for who waits already.
    void allow(Nanoseconds bound) { bound_ = bound; }

    // Whose events are served. Before that, waits serve nothing.
    void serve(WatchingLoop& loop) { loop_ = &loop; }

    // The answer to the question about that native directory; nothing when the disk doesn't answer.
    std::optional<std::string> ask(std::string_view question, const std::string& path);

    // The same by the program itself, for when there can be no worker: better than not at all.
    DiskAnswer answerHere(std::string_view question) { return answer_(question); }

    // For who doesn't wait, or has many questions and puts the next ones before he has the answers:
    // a worker of his own, and the wait for its next answer. Without one, the disk couldn't be
    // asked.
    std::unique_ptr<DiskWorker> borrow();
    void giveBack(std::unique_ptr<DiskWorker> worker); // when it has answered everything
    enum class Wait { answered, hung, died };
    // Sleeps as long first, if there is no answer yet.
    Wait await(DiskWorker& worker, std::string& answer, Nanoseconds nap = Nanoseconds(0));
    void hasHung(std::unique_ptr<DiskWorker> worker, const std::string& path); // over this
    void end(std::unique_ptr<DiskWorker> worker); // one that has more to answer, or none can

    bool isHung(const std::string& path);

private:
    struct Hung {
        std::unique_ptr<DiskWorker> worker;
        std::string place; // native: a directory, with all that lies below it
        Nanoseconds since;
    };

    void serveEvents(const DiskWorker& worker, const std::function<bool()>& isOver,
                     Nanoseconds latest);
    void lookAfterHung();
    std::string placeOf(const std::string& path) const;

    DiskWorker::Answer answer_;
    Nanoseconds bound_ = longestAnswer;
    WatchingLoop* loop_ = nullptr;
    std::vector<std::unique_ptr<DiskWorker>> idle_, ended_;
    std::vector<Hung> hung_;
};

} // namespace larkspin
