#include "playback/stop_window.h"

#include "chat/room.h"
#include "playback/choice_recital.h"
#include "playback/selection_dialogue.h"
#include "shell/app_state.h"
#include "shell/controls.h"

#include <string>

namespace larkspin {

std::vector<Control> StopWindow::controls() {
    return {button({.name = "label",
                    .place = {0, 0, 900, 270},
                    .text = shows(state_.stopsCaption),
                    .onClick = [this] { click(); }})};
}

void StopWindow::click() {
    if (state_.stopsCaption == stopsLeadingBack)
        dialogue_.showChoices();
    else if (state_.stopsCaption == stopsOffering)
        recite();
    else if (state_.stopsCaption == stopsReciting)
        breakOff(stopsResting);
    else
        breakOff(stopsLeadingBack); // the recital of `yes`
}

// A recital looks at the caption after its next wait. In a room on a network it may be waiting for
// its lines to go out, so those are dropped.
void StopWindow::breakOff(std::string_view caption) {
    state_.stopsCaption = caption;
    room_.dropUnsaid();
}

void StopWindow::recite() {
    state_.stopsCaption = stopsReciting; // at once: another click must not start another one
    const auto ended = [this](ChoiceRecital::End end) {
        if (end == ChoiceRecital::End::broken)
            state_.stopsCaption = stopsOffering;
        if (end == ChoiceRecital::End::broken || end == ChoiceRecital::End::lost)
            recital_.tellBroken();
    };
    const std::string count = std::to_string(state_.choiceList.count());
    recital_.recite(stopsResting, ended, "scrolling <b>" + count + "</b> matches");
}

} // namespace larkspin
