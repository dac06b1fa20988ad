// The other player on this machine: one on the bus goes first, and where none runs there, the
// front-most main window of the player that the commands bear the name of.
#pragma once

#include "host/window_tree/window_calls.h"
#include "outside/other_player.h"

namespace larkspin {

class WindowPlayer : public OtherPlayer {
public:
    WindowPlayer(OtherPlayer& onBus, WindowCalls& windows) : onBus_(onBus), windows_(windows) {}

    bool press(Button button) override;
    std::optional<std::string> title() override;

private:
    FoundWindows found(WindowWalk::Tells tells);

    OtherPlayer& onBus_;
    WindowCalls& windows_;
};

} // namespace larkspin
