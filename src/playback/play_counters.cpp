#include "playback/play_counters.h"

#include "library/playlist_row.h"
#include "playback/count_keys.h"
#include "shell/app_state.h"
#include "shell/settings.h"
#include "text/number.h"
#include "text/parts.h"

namespace larkspin {

namespace {

constexpr std::string_view section = "times played";

} // namespace

// Older versions cut a name at its first equals sign, and kept its count under what stood before
// that. What is a song's whole name counts for that song alone.
double PlayCounters::count(const std::string& title) {
    std::string counted = settings_.getini(section, countKey(title), countsFile_);
    const std::string cut(partedAt(title, '=').head);
    if (counted.empty() && cut != title && !songOfFile(cut, "").extension.starts_with('.'))
        counted = settings_.getini(section, cut, countsFile_);
    return numberOrZero(counted);
}

void PlayCounters::store(const std::string& title, double counted) {
    settings_.putini(section, countKey(title), numberText(counted), countsFile_);
}

void PlayCounters::bumpcount() {
    const std::string title = state_.play;
    const double counted = count(title) + 1;
    store(title, counted);
    show(counted);
}

void PlayCounters::drop(const std::string& title) {
    settings_.removeini(section, countKey(title), countsFile_);
}

void PlayCounters::carry(const std::string& title, const std::string& newTitle) {
    const double counted = count(title);
    if (counted == 0)
        return;
    store(newTitle, counted);
    if (count(newTitle) != counted)
        return; // it couldn't be written
    drop(title);
    if (count(newTitle) != counted) // the two differ in case alone, and have one key
        store(newTitle, counted);
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
