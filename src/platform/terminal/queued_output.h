// Text on its way to a terminal, a pipe or a file that may take it slowly or not at all: writing
// never blocks. What isn't taken at once waits in a queue and goes when the loop finds the reader
// ready; past the queue's bound, text is dropped and counted. What others say has a bound of its
// own below it, so that no flood of theirs takes the place of what the owner is told.
//
// The descriptor's own flags stay as they are, since other processes share them. A terminal or a
// pipe is opened once more through /proc for a description of its own that doesn't block. Where
// that can't be done, each write is small and comes when the reader is known to take one.
#pragma once

#include "platform/posix/poll_loop.h"

#include <chrono>
#include <functional>
#include <string>
#include <string_view>

namespace larkspin {

class QueuedOutput {
public:
    QueuedOutput(PollLoop& loop, int descriptor);
    ~QueuedOutput();
    QueuedOutput(const QueuedOutput&) = delete;
    QueuedOutput& operator=(const QueuedOutput&) = delete;

    // A text that begins below its mark is taken whole, whatever its size.
    static constexpr std::size_t boundOfOthers = 1 << 20; // bytes
    static constexpr std::size_t bound = 2 * boundOfOthers;

    // Lines, all of them or none. Once some have been dropped, so are those of their kind that
    // follow, until the reader has been told: when he has taken what waits, or in front of the next
    // line of the owner's that has room. When he has gone for good, texts go nowhere.
    void put(std::string_view lines) { putCounted(lines, 1, bound); }
    // The same for what others have said.
    void putOfOthers(std::string_view lines) { putCounted(lines, 1, boundOfOthers); }
    // The same for what only passes on the screen, like a line that is being typed: nobody misses
    // it that it wasn't seen.
    void putPassing(std::string_view text) { putCounted(text, 0, bound); }

    // Called after texts were dropped, as soon as there is room again or the reader has taken the
    // whole queue, with the number of dropped lines. It must not wait.
    void afterDrops(std::function<void(int count)> task) { afterDrops_ = std::move(task); }

    // False once the reader has gone. The task is called then, within a `put`. It must not wait.
    bool isRead() const { return !isGone_; }
    void whenGone(Task task) { whenGone_ = std::move(task); }

    // Whether the reader has taken all of it.
    bool isTaken() const { return !isWaiting(); }

    // Until when it makes sense to wait for the reader before more is written: a little past the
    // last time that it took something. Nanoseconds::min() when hardly anything waits.
    Nanoseconds busyUntil() const;
    // Called from the loop when the reader has taken all of a queue. It must not wait.
    void whenTaken(Task task) { whenTaken_ = std::move(task); }

    // At the end of the process: waits for a reader for as long as he goes on taking. What is left
    // then is lost.
    using Wait = std::function<bool(int descriptor, std::chrono::milliseconds longest)>;
    void finish(const Wait& takesBytes = waitForReader);
    // Waits until the descriptor takes something. False when it doesn't within that time.
    static bool waitForReader(int descriptor, std::chrono::milliseconds longest);

private:
    bool isWaiting() const { return taken_ < queue_.size(); }
    std::size_t waiting() const { return queue_.size() - taken_; }
    void putCounted(std::string_view text, int count, std::size_t most);
    void tellDrops();
    void writeOn();
    void readerIsReady();
    bool writeSome();

    PollLoop& loop_;
    int descriptor_; // writing to it doesn't block, or it is the one given
    bool isOwn_;
    bool mustPoll_;
    bool isGone_ = false;
    std::string queue_;
    std::size_t taken_ = 0; // of the queue
    Nanoseconds takenAt_{}; // the last time that the reader took something, or had nothing to take
    bool hasDropped_ = false;
    int dropped_ = 0; // puts of lines
    std::function<void(int)> afterDrops_ = [](int) {};
    Task whenTaken_ = [] {}, whenGone_ = [] {};
};

} // namespace larkspin
