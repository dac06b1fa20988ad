// What stands on the stop window: one label, whose caption is its state and says what a click does
// about the choices. It shows them, recites them, or breaks a recital off; it doesn't stop a song.
#pragma once

#include "chat/core.h"
#include "shell/window.h"

#include <string_view>
#include <vector>

namespace larkspin {

class ChoiceRecital;
class Room;
class SelectionDialogue;

class StopWindow {
public:
    StopWindow(const Core& core, Room& room, SelectionDialogue& dialogue, ChoiceRecital& recital)
        : state_(core.state), room_(room), dialogue_(dialogue), recital_(recital) {}

    std::vector<Control> controls();

private:
    void click();
    void recite();
    void breakOff(std::string_view caption);

    AppState& state_;
    Room& room_;
    SelectionDialogue& dialogue_;
    ChoiceRecital& recital_;
};

} // namespace larkspin
