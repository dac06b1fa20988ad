// Sees to it that the end of one song doesn't keep the next one waiting: a process that isn't
// through with it in a second is left with it.
#pragma once

#include "platform/player/player_line.h"

namespace larkspin {

class Handover {
public:
    // `hear` takes in all that the process has said; `leave` leaves it with its song.
    Handover(EventLoop& loop, const PlayerLine& line, Task hear, Task leave)
        : loop_(loop), line_(line), hear_(std::move(hear)), leave_(std::move(leave)) {}
    ~Handover() { loop_.cancel(watch_); }
    Handover(const Handover&) = delete;
    Handover& operator=(const Handover&) = delete;

    void begin(); // when another song is wished; one under way goes on

private:
    void watch();

    EventLoop& loop_;
    const PlayerLine& line_;
    Task hear_, leave_;
    TimerId watch_ = TimerId::none;
    std::uint32_t olderSong_ = 0; // the song that the process was still at
    int rounds_ = 0;              // since it came to that
};

} // namespace larkspin
