#include "platform/player/handover.h"

#include <utility>

namespace larkspin {

namespace {

// Rounds are counted instead of time, since the whole program may have been halted in between.
constexpr Nanoseconds handoverInterval = std::chrono::milliseconds(250);
constexpr int mostRoundsBehind = 4;

} // namespace

void Handover::begin() {
    if (watch_ == TimerId::none)
        watch_ = loop_.every(handoverInterval, [this] { watch(); });
}

void Handover::watch() {
    hear_();
    const std::uint32_t song = line_.report().song;
    const bool isBehind = line_.isUp() && song != 0 && !line_.isTaken();
    // A process that has come to another song, though not yet to the wished one, gets its time
    // anew.
    if (isBehind && std::exchange(olderSong_, song) != song)
        rounds_ = 0;
    if (isBehind && ++rounds_ < mostRoundsBehind)
        return;
    loop_.cancel(std::exchange(watch_, TimerId::none));
    if (isBehind)
        leave_();
}

} // namespace larkspin
