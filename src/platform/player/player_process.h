// A player process and the socket to it. Nothing here waits. A message that the process doesn't
// take is sent again later, and a process that is to end is killed. Should the program die, the
// process ends by itself.
#pragma once

#include "platform/player/player_messages.h"
#include "platform/posix/descriptor.h"

#include <memory>
#include <string>
#include <sys/types.h>
#include <vector>

namespace larkspin {

class PlayerProcess {
public:
    // Nothing when it can't be started.
    static std::unique_ptr<PlayerProcess> start(const std::string& program,
                                                const std::vector<std::string>& arguments);
    ~PlayerProcess();
    PlayerProcess(const PlayerProcess&) = delete;
    PlayerProcess& operator=(const PlayerProcess&) = delete;

    // False when it takes nothing at the moment. A song's file goes along with the first message
    // about it.
    bool send(const PlayerWishes& wishes, const Descriptor& file);
    std::optional<PlayerReport> receive(); // the next report, if there is one

    // It has ended, or it says what no player says.
    bool isBroken() const { return broken_; }

    void kill();
    bool isGone(); // once killed: whether nothing is left of it

private:
    PlayerProcess(pid_t id, Descriptor channel) : id_(id), channel_(std::move(channel)) {}

    pid_t id_;
    Descriptor channel_;
    std::uint32_t given_ = 0; // the song whose file it has
    bool broken_ = false;
    bool gone_ = false;
};

} // namespace larkspin
