// A process that is asked in the program's place what can hang whoever asks it, as a disk far away
// may: it is given questions and answers them in turn, for as long as it isn't killed. An answer
// may bring an open file along.
#pragma once

#include "platform/posix/descriptor.h"

#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace larkspin {

struct DiskAnswer {
    DiskAnswer(std::string said, Descriptor opened = {})
        : text(std::move(said)), file(std::move(opened)) {}

    std::string text;
    Descriptor file;
};

class DiskWorker {
public:
    // Runs in a process that was forked from the program and has none of its threads. So it works
    // with nothing but what it is given and what it asks the system.
    using Answer = std::function<DiskAnswer(std::string_view question)>;

    // Nothing when there can be no more processes.
    static std::unique_ptr<DiskWorker> start(const Answer& answer);
    ~DiskWorker(); // ends it
    DiskWorker(const DiskWorker&) = delete;
    DiskWorker& operator=(const DiskWorker&) = delete;

    int channel() const { return channel_.number(); } // readable when there are answers

    // None of these waits. What `add` takes is sent by the next of them.
    void add(std::string_view question);
    void flush();
    void send(std::string_view question) {
        add(question);
        flush();
    }
    std::optional<DiskAnswer> receive(); // the next answer, when it is there

    // Waits until the worker says something, or can take more of what is being sent.
    void waitForNews(std::chrono::milliseconds longest) const;

    // Whether something is left that the worker hasn't taken yet.
    bool hasUnsent() const { return sent_ < outgoing_.size(); }
    bool isBroken() const { return isBroken_; } // it has died

    void kill();   // one that hangs dies when its disk lets it
    bool isGone(); // whether the process has ended and left nothing

private:
    DiskWorker(pid_t process, Descriptor channel)
        : process_(process), channel_(std::move(channel)) {}

    void fill();

    pid_t process_;
    Descriptor channel_;
    std::string outgoing_, incoming_;
    std::size_t sent_ = 0, taken_ = 0; // of the two
    std::deque<Descriptor> files_;     // of the answers that haven't been taken
    bool isBroken_ = false, isGone_ = false;
};

} // namespace larkspin
