#include "playback/choice_recital.h"

#include "chat/recitals.h"
#include "chat/reply.h"
#include "playback/choices.h"
#include "playback/transport.h"
#include "shell/app_state.h"

#include <utility>

namespace larkspin {

namespace {

constexpr double betweenLines = 0.6; // seconds

} // namespace

void ChoiceRecital::recite(std::string_view breakCaption, Ended ended, const std::string& opening) {
    Telling telling{breakCaption, std::move(ended), choices_.beginRecital(), ++begun_};
    Recitals::Step step = [this, telling = std::move(telling)]() mutable {
        return tellNext(telling);
    };
    if (opening.empty())
        recitals_.begin(std::move(step));
    else
        recitals_.begin(opening, betweenLines, std::move(step));
}

// One that is broken off pauses once more before it ends.
std::optional<double> ChoiceRecital::tellNext(Telling& telling) {
    const bool goesOn = choices_.isCurrent(telling.own) && !telling.isBroken &&
                        telling.choice < state_.choiceList.count();
    if (!goesOn) {
        telling.ended(endOf(telling));
        return std::nullopt;
    }
    const int choice = telling.choice++;
    state_.choiceList.setCurrentIndex(choice);
    // A click on the stop window has changed its caption.
    telling.isBroken = state_.stopsCaption == telling.breakCaption;
    if (!telling.isBroken)
        tell(choice);
    return betweenLines;
}

ChoiceRecital::End ChoiceRecital::endOf(const Telling& telling) {
    const bool isCurrent = choices_.isCurrent(telling.own);
    if (telling.isBroken)
        return isCurrent ? End::broken : End::lost;
    if (isCurrent) {
        askForNumber();
        return End::asked;
    }
    if (!choices_.areOpen())
        choices_.hideStopWindow(); // a random pick ends the choices without this
    // Whether another recital has begun since this one did.
    return telling.begun == begun_ ? End::lost : End::replaced;
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
