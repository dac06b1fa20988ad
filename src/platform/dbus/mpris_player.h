// The other player on this machine, by MPRIS: the one that plays, else one that is paused, else the
// first by name. larkspin itself isn't another player, and neither is playerctld, which speaks for
// those that are there.
//
// All players are asked at once, so that one that hangs hides none that answers; one that only
// hangs counts as the last of all, and has no title. No player is started by being asked.
#pragma once

#include "outside/other_player.h"

#include <string>

namespace larkspin {

class MprisPlayer : public OtherPlayer {
public:
    explicit MprisPlayer(std::string busAddress) : busAddress_(std::move(busAddress)) {}

    bool press(Button button) override;
    std::optional<std::string> title() override;

private:
    // A connection is made for each question, since the bus may end and another one begin while the
    // program runs.
    std::string busAddress_;
};

} // namespace larkspin
