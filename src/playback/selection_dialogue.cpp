#include "playback/selection_dialogue.h"

#include "chat/reply.h"
#include "chat/room.h"
#include "playback/choice_recital.h"
#include "playback/choices.h"
#include "playback/play_selection.h"
#include "playback/transport.h"
#include "shell/app_state.h"
#include "text/number.h"

namespace larkspin {

void SelectionDialogue::yes() {
    if (!choices_.areOpen() || choices_.areOnShow())
        return;
    choices_.markRecited();
    if (reply_.refusedInSilence("this is unavailable in silent mode"))
        return;
    transport_.holdShuffle();
    choices_.showStopWindow();
    recital_.recite(stopsLeadingBack, [this](ChoiceRecital::End end) {
        if (end == ChoiceRecital::End::asked)
            room_.bringHostForward(); // the owner is to type a number next
        if (end != ChoiceRecital::End::broken)
            return;
        choices_.markNormal();
        recital_.tellBroken();
    });
}

void SelectionDialogue::no() {
    if (!choices_.areOpen() || choices_.areOnShow() || choices_.wereRecited())
        return;
    endSelection();
    reply_.saychat("selection will not be scrolled");
}

void SelectionDialogue::view() {
    if (showChoices())
        reply_.saychat("viewing multiple choices");
}

bool SelectionDialogue::showChoices() {
    if (!choices_.areOpen() || choices_.wereRecited())
        return false;
    transport_.holdShuffle();
    choices_.showWithStopWindow();
    return true;
}

void SelectionDialogue::cancel() {
    endSelection();
    choices_.markNormal();
    reply_.saychat("selection cancelled");
}

void SelectionDialogue::endSelection() {
    choices_.closeselection();
    choices_.replace(state_.play);
    // The list goes on from the row last started, as if there had been no search.
    state_.setMasterIndex(transport_.resumeRow());
    transport_.resumeShuffle();
}

void SelectionDialogue::m(const std::string& text) {
    if (!number(text)) {
        reply_.saychat("finish choosing your selection, dumbass");
        return;
    }
    const int wanted = wholeNumber16(text).value_or(0);
    if (wanted < 1 || wanted > state_.choiceList.count())
        reply_.saychat("invalid number stupid, choose again");
    else
        selection_.selp3(wanted);
}

void SelectionDialogue::startClicked() {
    const int row = state_.choiceList.currentIndex();
    if (row >= 0)
        selection_.selp3(row + 1);
}

// The title stays as it is, and the choice list keeps its place in the window, until the commands
// are shown or a song starts.
void SelectionDialogue::close() {
    if (!choices_.areOnShow())
        return;
    choices_.hideStopWindow();
    choices_.replace(state_.play);
    state_.playlistView.setCurrentIndex(transport_.resumeRow());
    transport_.resumeShuffle();
}

} // namespace larkspin
