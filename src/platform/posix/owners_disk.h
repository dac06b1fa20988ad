// A disk with the owner's songs may hang for a minute or for ever, and with it whoever asks it. So
// it is asked by workers, processes of their own. The program waits for them within a bound, and
// serves events meanwhile if the answer takes longer than a blink.
//
// What has hung isn't asked again until it has answered after all, or a while has passed. Until
// then everything in the same directory counts as unanswered at once, and on a disk that is far
// away everything on that disk.
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

    // How long an answer may take from now on, also for those who wait already.
    void allow(Nanoseconds bound) { bound_ = bound; }

    // The loop whose events are served during a wait. Before this is called, none are.
    void serve(WatchingLoop& loop) { loop_ = &loop; }

    // The answer to the question about that native directory; nothing when the disk doesn't answer.
    std::optional<std::string> ask(std::string_view question, const std::string& path);

    // The program itself answers, for when no worker can be started: better than not asking at all.
    DiskAnswer answerHere(std::string_view question) { return answer_(question); }

    // For a caller who doesn't wait, or who asks many questions ahead: a worker of his own, and the
    // wait for its next answer. Nothing when no worker can be started.
    std::unique_ptr<DiskWorker> borrow();
    void giveBack(std::unique_ptr<DiskWorker> worker); // one that owes no answer
    enum class Wait { answered, hung, died };
    // `nap`: how long to sleep first if there is no answer yet.
    Wait await(DiskWorker& worker, std::string& answer, Nanoseconds nap = Nanoseconds(0));
    void hasHung(std::unique_ptr<DiskWorker> worker, const std::string& path); // over this path
    void end(std::unique_ptr<DiskWorker> worker); // one that still owes answers, or is broken

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
