// A process that is asked in the program's place what can hang whoever asks it, as a disk far away
// may: it is given questions and answers them in turn, for as long as it isn't killed. Nothing here
// waits.
#pragma once

#include "platform/posix/descriptor.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace larkspin {

class DiskWorker {
public:
    // Runs in a process that was forked off another one's threads: it knows only what it is given
    // and what it asks the system.
    using Answer = std::function<std::string(std::string_view question)>;

    // Nothing when there can be no more processes.
    static std::unique_ptr<DiskWorker> start(const Answer& answer);
    ~DiskWorker(); // ends it
    DiskWorker(const DiskWorker&) = delete;
    DiskWorker& operator=(const DiskWorker&) = delete;

    int channel() const { return channel_.number(); } // readable when there are answers

    void send(std::string_view question);
    std::optional<std::string> receive(); // the next answer, when it is there

    // Whether it waits for the other end to take what it was given.
    bool hasUnsent() const { return sent_ < outgoing_.size(); }
    bool isBroken() const { return isBroken_; } // it has died

    void kill();   // one that hangs dies when its disk lets it
    bool isGone(); // whether nothing is left of it

private:
    DiskWorker(pid_t process, Descriptor channel)
        : process_(process), channel_(std::move(channel)) {}

    void flush();
    void fill();

    pid_t process_;
    Descriptor channel_;
    std::string outgoing_, incoming_;
    std::size_t sent_ = 0, taken_ = 0; // of the two
    bool isBroken_ = false, isGone_ = false;
};

} // namespace larkspin
