// Tells when a player process no longer gets on with its song. Only what it reports counts as
// life: not what it is asked for, and not that it was given another song.
#pragma once

#include "platform/player/player_messages.h"

namespace larkspin {

class Standstill {
public:
    enum class Patience {
        starting, // it hasn't been heard from, and may be slow to start
        usual,
        suspicious // it has had other songs, which may have harmed it; another one is at hand
    };

    void begin() { rounds_ = 0; } // nothing was to be done until now

    // A round of a second. They are counted instead of time, since the whole program may have been
    // halted in between. True when the process is to be given up.
    bool isReached(const PlayerReport& report, Patience patience);

private:
    PlayerReport last_;
    int rounds_ = 0;
};

} // namespace larkspin
