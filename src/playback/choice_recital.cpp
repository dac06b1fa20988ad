#include "playback/choice_recital.h"

#include "chat/reply.h"
#include "playback/choices.h"
#include "playback/transport.h"
#include "shell/app_state.h"
#include "shell/pause.h"

namespace larkspin {

namespace {

constexpr double betweenLines = 0.6; // seconds

} // namespace

ChoiceRecital::End ChoiceRecital::recite(std::string_view breakCaption,
                                         const std::string& opening) {
    const Pause pause(loop_);
    const unsigned own = choices_.beginRecital();
    const unsigned begun = ++begun_;
    if (!opening.empty()) {
        reply_.saychat(opening);
        pause(betweenLines);
    }
    for (int choice = 0; choices_.isCurrent(own) && choice < state_.choiceList.count(); ++choice) {
        state_.choiceList.setCurrentIndex(choice);
        // A click on the stop window has changed its caption.
        const bool isBroken = state_.stopsCaption == breakCaption;
        if (!isBroken)
            tell(choice);
        pause(betweenLines);
        if (isBroken)
            return choices_.isCurrent(own) ? End::broken : End::lost;
    }
    if (choices_.isCurrent(own)) {
        askForNumber();
        return End::asked;
    }
    if (!choices_.areOpen())
        choices_.hideStopWindow(); // a random pick ends the choices without this
    // Whether another recital has begun since this one did.
    return begun == begun_ ? End::lost : End::replaced;
}

void ChoiceRecital::tell(int choice) {
    const Song song = songOfRow(state_.choiceList.row(choice));
    reply_.saychat("<b>" + std::to_string(choice + 1) + "</b>.  " +
                   markedName(song.name, state_.searchTerm));
}

// Answers count from here on, since one may come while the question is being said.
void ChoiceRecital::askForNumber() {
    choices_.awaitAnswer();
    const std::string& trigger = state_.trigger;
    reply_.saychat("type <b>" + trigger + "m 1</b> - <b>" + trigger + "m " +
                   std::to_string(state_.choiceList.count()) + "</b> or <b>" + trigger + "cancel");
}

void ChoiceRecital::tellBroken() {
    reply_.saychat("selection scroll aborted");
}

} // namespace larkspin
