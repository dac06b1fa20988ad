#include "playback/play_counters.h"

#include "shell/app_state.h"
#include "shell/settings.h"
#include "text/number.h"

namespace larkspin {

namespace {

constexpr std::string_view section = "times played";

} // namespace

double PlayCounters::count(const std::string& title) {
    return numberOrZero(settings_.getini(section, title, countsFile_));
}

void PlayCounters::bumpcount() {
    const std::string title = state_.play;
    const double counted = count(title) + 1;
    settings_.putini(section, title, numberText(counted), countsFile_);
    show(counted);
}

void PlayCounters::drop(const std::string& title) {
    settings_.removeini(section, title, countsFile_);
}

void PlayCounters::carry(const std::string& title, const std::string& newTitle) {
    const double counted = count(title);
    if (counted == 0)
        return;
    settings_.putini(section, newTitle, numberText(counted), countsFile_);
    // Some names are no key, and some share one.
    if (count(newTitle) != counted)
        return;
    drop(title);
    if (count(newTitle) != counted)
        settings_.putini(section, newTitle, numberText(counted), countsFile_);
}

void PlayCounters::bumpPlayed() {
    settings_.put("played", numberText(numberOrZero(settings_.yochoose(Choice::played)) + 1));
    played();
}

void PlayCounters::countEnd() {
    bumpcount();
    bumpPlayed();
}

std::string PlayCounters::played() {
    std::string played = settings_.yochoose(Choice::played);
    state_.mpp = "mp3s played:  " + played;
    return played;
}

void PlayCounters::show(double count) {
    state_.playtz = "played " + numberText(count) + " times";
}

} // namespace larkspin
