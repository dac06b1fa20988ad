// The port to another music player that runs on the machine. Which one, if there are several, is
// the implementation's choice, made anew at each call. A player that doesn't answer within a
// quarter of a second counts as one without a title. Nothing throws.
#pragma once

#include <optional>
#include <string>

namespace larkspin {

class OtherPlayer {
public:
    virtual ~OtherPlayer() = default;

    enum class Button { previous, play, stop, next };

    // Presses a button, without waiting for what comes of it. False when no player runs.
    virtual bool press(Button button) = 0;

    // What it plays, as the player shows it; nothing when no player runs.
    virtual std::optional<std::string> title() = 0;
};

} // namespace larkspin
