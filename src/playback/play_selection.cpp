#include "playback/play_selection.h"

#include "chat/reply.h"
#include "chat/scanner.h"
#include "library/playlist.h"
#include "playback/random_pick.h"
#include "playback/transport.h"
#include "shell/app_state.h"
#include "text/highlight.h"
#include "text/number.h"

namespace larkspin {

void PlaySelection::play(const std::string& text) {
    if (!searchrows(state_, state_.masterList, text)) {
        const bool silent = state_.silnt;
        reply_.sayOrBox("your gay song was not found");
        if (!silent)
            closeselection();
        return;
    }
    state_.searchTerm = text;
    transport_.endPauseMark();
    if (state_.choiceList.count() == 1)
        playOnlyHit(text);
    else
        askForChoice();
}

void PlaySelection::playOnlyHit(const std::string& text) {
    state_.choiceList.setCurrentIndex(0);
    const Song song = songOfRow(state_.choiceList.currentRow());
    if (!transport_.open(song))
        return;
    closeselection();
    if (!transport_.announce("playing:  <b>", std::to_string(state_.masterIndex() + 1),
                             marked(song.name, text), song))
        return;
    transport_.showStarted();
    transport_.keepPosition();
    NiteScan2_.stopscan();
    transport_.remember(song);
    transport_.resumeModeTick();
}

// The song that plays goes on; masterIndex stands on the last hit.
void PlaySelection::askForChoice() {
    closeselection();
    if (state_.silnt) {
        state_.commandsTitle = commandsChoosing;
        return;
    }
    const std::string& trigger = state_.trigger;
    reply_.saychat("scroll <b>" + std::to_string(state_.choiceList.count()) + "</b> choices?  <b>" +
                   trigger + "yes </b>, <b>" + trigger + "no</b>, or <b>" + trigger + "view");
}

// A negative number isn't refused: the list can't take it, and its current row starts.
void PlaySelection::num(const std::string& number) {
    const int wanted = wholeNumber16(number).value_or(0);
    if (wanted == 0 || wanted > state_.masterList.count()) {
        reply_.saychat("invalid number stupid");
        return;
    }
    state_.setMasterIndex(wanted - 1);
    if (transport_.startCurrentRow("playing:  <b>"))
        NiteScan2_.stopscan();
}

void PlaySelection::rnd() {
    if (state_.masterList.empty()) {
        reply_.sayOrBox("no mp3s found, stupid");
        return;
    }
    closeselection();
    randp3();
}

void PlaySelection::randp3() {
    randomPick_.randompick();
    const Song song = songOfRow(state_.masterList.currentRow());
    if (!transport_.open(song))
        return;
    if (!transport_.announce("random:  <b>", std::to_string(state_.masterIndex() + 1), song.name,
                             song))
        return;
    transport_.showStarted();
    transport_.keepPosition();
    NiteScan2_.stopscan();
    transport_.remember(song);
    transport_.resumeModeTick();
}

void PlaySelection::rnd(const std::string& text) {
    closeselection();
    if (!searchrows(state_, state_.masterList, text)) {
        reply_.sayOrBox("your gay song was not found");
        return;
    }
    randomPick_.pickFromChoices();
    const int picked = state_.choiceList.currentIndex();
    const Song song = songOfRow(state_.choiceList.currentRow());
    if (!transport_.open(song))
        return;
    const std::string hits = std::to_string(state_.choiceList.count());
    if (!transport_.announce("random:  <b>", std::to_string(picked + 1) + "/" + hits,
                             marked(song.name, text), song))
        return;
    placeBehindRandomHit(text, picked);
    transport_.showStarted();
    NiteScan2_.stopscan();
    transport_.remember(song);
    transport_.replaceChoices(song.title());
    transport_.resumeModeTick();
}

// The search has left masterIndex on the last hit. Counting back from there finds the picked
// row when the hits lie next to each other; otherwise some other row, and `next` goes on from
// that one.
void PlaySelection::placeBehindRandomHit(const std::string& text, int picked) {
    if (text.empty()) {
        state_.setMasterIndex(picked);
        return;
    }
    const int before = state_.masterIndex() - (state_.choiceList.count() - picked);
    state_.resumeIndex = std::to_string(before);
    state_.setMasterIndex(before + 1);
}

void PlaySelection::closeselection() {
    if (state_.commandsTitle == commandsChoosing)
        state_.commandsTitle = commandsNormal;
    state_.stopsCaption = stopsResting;
}

std::string PlaySelection::marked(const std::string& name, const std::string& text) const {
    return highlight(name, text, "<b><u>" + text + "</b></u>");
}

} // namespace larkspin
