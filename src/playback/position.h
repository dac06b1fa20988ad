// Where the player stands in its song: the commands that tell it and that move it.
#pragma once

#include "chat/core.h"

#include <string>

namespace larkspin {

class MediaControl;

class Position {
public:
    Position(const Core& core, MediaControl& player) : reply_(core.reply), player_(player) {}

    void len();
    void pos();

    // Move to a time "m:ss", or forward and back by whole seconds.
    void posTo(const std::string& time);
    void fwd(const std::string& seconds);
    void rew(const std::string& seconds);

private:
    Reply& reply_;
    MediaControl& player_;
};

} // namespace larkspin
