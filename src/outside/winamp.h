// The other player's commands: what it plays, and its buttons. They bear the name of the player
// they were made for.
#pragma once

#include "chat/core.h"
#include "outside/other_player.h"

#include <string>

namespace larkspin {

class Winamp {
public:
    Winamp(const Core& core, OtherPlayer& player) : core_(core), player_(player) {}

    void amp(); // speaks in silent mode too
    void wstop();
    void wpre();
    void wplay();
    void wnext();

private:
    void pressAndTell(OtherPlayer::Button button, const std::string& opening);

    Core core_;
    OtherPlayer& player_;
};

} // namespace larkspin
