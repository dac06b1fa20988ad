#include "outside/window_player.h"

#include "host/window_tree/host_bytes.h"

namespace larkspin {

namespace {

constexpr char playersClass[] = "Winamp v1.x";
constexpr unsigned commandMessage = 0x111;

// The numbers that the player tells other programs to press its buttons by.
std::uint64_t commandOf(OtherPlayer::Button button) {
    switch (button) {
    case OtherPlayer::Button::previous:
        return 40044;
    case OtherPlayer::Button::play:
        return 40045;
    case OtherPlayer::Button::stop:
        return 40047;
    case OtherPlayer::Button::next:
        return 40048;
    }
    return 0;
}

} // namespace

FoundWindows WindowPlayer::found(WindowWalk::Tells tells) {
    return windows_.walk({.className = playersClass, .tells = tells});
}

bool WindowPlayer::press(Button button) {
    if (onBus_.press(button))
        return true;
    const FoundWindows players = found(WindowWalk::Tells::nothing);
    return !players.empty() &&
           windows_.post(players.front().window, commandMessage, commandOf(button), 0);
}

std::optional<std::string> WindowPlayer::title() {
    if (auto onBus = onBus_.title())
        return onBus;
    const FoundWindows players = found(WindowWalk::Tells::text);
    if (players.empty())
        return std::nullopt;
    return fromSingleByte(players.front().text);
}

} // namespace larkspin
