// Looks for a sound device while songs play silently. A player that is confined can open none any
// more, so each look is a player process of its own; the one that has a device then plays on.
#pragma once

#include "platform/player/player_line.h"

#include <cstdint>

namespace larkspin {

class DeviceScout {
public:
    // `found` takes the line over. `inVain` is told of each look without a device, and once of one
    // that gets no answer, which goes on.
    DeviceScout(EventLoop& loop, std::string program, std::vector<std::string> arguments,
                Task found, Task inVain);
    ~DeviceScout() { loop_.cancel(rounds_); }
    DeviceScout(const DeviceScout&) = delete;
    DeviceScout& operator=(const DeviceScout&) = delete;

    void begin();                    // unless it is at it
    void begin(PlayerLine& waiting); // with that line's process, which is about to open a device
    void end();
    bool isAtWork() const { return rounds_ != TimerId::none; }
    PlayerLine& line() { return line_; }
    bool leavesNothing() { return line_.leavesNothing(); }

private:
    void round();
    void hear();
    bool isTime();
    void look();

    EventLoop& loop_;
    PlayerLine line_;
    Task found_, inVain_;
    TimerId rounds_ = TimerId::none;
    std::vector<std::int64_t> signs_; // as they were at the last round
    int looksToCome_ = 0;
    int waited_ = 0; // rounds since the last look began
    Nanoseconds foundAt_ = -Nanoseconds::max() / 2;
};

} // namespace larkspin
