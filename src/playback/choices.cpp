#include "playback/choices.h"

#include "chat/scanner.h"
#include "shell/app_state.h"

namespace larkspin {

bool Choices::areOpen() const {
    return state_.choiceList.count() > 1;
}

void Choices::offer(const std::string& title) {
    if (!areOpen())
        replace(title);
}

void Choices::replace(const std::string& title) {
    clear();
    state_.choiceList.add(title);
}

void Choices::take(const std::string& title) {
    replace(title);
    state_.choiceList.setCurrentIndex(0);
}

void Choices::clear() {
    state_.choiceList.clear();
    stopListening();
}

void Choices::show() {
    state_.commandsTitle = commandsChoosing;
}

void Choices::closeselection() {
    if (state_.commandsTitle == commandsChoosing)
        state_.commandsTitle = commandsNormal;
    state_.stopsCaption = stopsResting;
}

void Choices::stopListening() {
    NiteScan2_.stopscan();
}

} // namespace larkspin
