#include "playback/choices.h"

#include "chat/commands_window.h"
#include "chat/scanner.h"
#include "shell/app_state.h"

namespace larkspin {

namespace {

constexpr int stopsAbove = 300; // twips from the stop window's top edge to the commands window's

} // namespace

bool Choices::areOpen() const {
    return state_.choiceList.count() > 1;
}

bool Choices::areOnShow() const {
    return state_.commandsTitle == commandsChoosing;
}

bool Choices::wereRecited() const {
    return state_.commandsTitle == commandsReciting;
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

// Closes whatever still shows older choices, so that all the answers that the question offers work.
// If the owner is already expected to give a number, that number counts for the new choices.
void Choices::ask() {
    closeselection();
    markNormal();
}

void Choices::show() {
    state_.commandsTitle = commandsChoosing;
    commandsWindow_.showChoices();
}

void Choices::showWithStopWindow() {
    show();
    stops.standsOn = &commandsWindow_.larkmain;
    stops.place.left = commandsWindow_.larkmain.place.left;
    stops.place.top = commandsWindow_.larkmain.place.top - stopsAbove;
    bringUp(stops);
    state_.stopsCaption = stopsOffering;
}

void Choices::giveWay() {
    if (!areOnShow())
        return;
    commandsWindow_.putCatalogueBack();
    markNormal();
    state_.stopsCaption = stopsLeadingBack;
}

void Choices::closeselection() {
    // This ends a recital that is under way.
    ++recital_;
    if (areOnShow()) {
        commandsWindow_.larkmain.visible = false;
        commandsWindow_.putCatalogueBack();
        markNormal();
    }
    hideStopWindow();
}

void Choices::hideStopWindow() {
    stops.visible = false;
    state_.stopsCaption = stopsResting;
}

void Choices::markRecited() {
    state_.commandsTitle = commandsReciting;
}

void Choices::markNormal() {
    state_.commandsTitle = commandsNormal;
}

void Choices::showStopWindow() {
    stops.standsOn = nullptr;
    bringUp(stops);
    state_.stopsCaption = stopsResting;
}

void Choices::awaitAnswer() {
    NiteScan2_.startscan();
    hideStopWindow();
}

void Choices::stopListening() {
    NiteScan2_.stopscan();
}

void Choices::load() {
    keepontop(stops);
}

void Choices::unload() {
    closeselection();
    commandsWindow_.larkmain.visible = false;
}

} // namespace larkspin
