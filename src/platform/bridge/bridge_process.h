// The bridge's process, a program of Windows that Wine runs, and the pipes to it. It ends when they
// are closed. Nothing here waits.
#pragma once

#include "platform/posix/descriptor.h"
#include "platform/posix/watching_loop.h"

#include <memory>
#include <string>
#include <sys/types.h>
#include <vector>

namespace larkspin {

// This side's ends of the pipes; neither of them ever waits.
struct BridgePipes {
    Descriptor questions, answers;
};

class BridgeProcess {
public:
    // In a session of its own, with all of the owner's variables. Nothing when it can't be started.
    static std::unique_ptr<BridgeProcess> start(const std::string& wine, const std::string& bridge);
    ~BridgeProcess() { kill(); }
    BridgeProcess(const BridgeProcess&) = delete;
    BridgeProcess& operator=(const BridgeProcess&) = delete;

    BridgePipes takePipes() { return std::move(pipes_); }
    void kill();
    bool isGone(); // whether nothing is left of it

private:
    BridgeProcess(pid_t id, BridgePipes pipes) : id_(id), pipes_(std::move(pipes)) {}

    pid_t id_;
    BridgePipes pipes_;
    bool gone_ = false;
};

// Those whose pipes are closed, until they are gone. One that takes too long is killed.
class EndingBridges {
public:
    explicit EndingBridges(EventLoop& loop) : loop_(loop) {}
    ~EndingBridges() { loop_.cancel(look_); }
    EndingBridges(const EndingBridges&) = delete;
    EndingBridges& operator=(const EndingBridges&) = delete;

    void add(std::unique_ptr<BridgeProcess> process);

private:
    struct Ending {
        std::unique_ptr<BridgeProcess> process;
        Nanoseconds since;
    };

    void look();

    EventLoop& loop_;
    std::vector<Ending> ending_;
    TimerId look_ = TimerId::none;
};

} // namespace larkspin
