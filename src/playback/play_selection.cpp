#include "playback/play_selection.h"

#include "chat/reply.h"
#include "library/playlist.h"
#include "playback/choices.h"
#include "playback/random_pick.h"
#include "playback/transport.h"
#include "shell/app_state.h"
#include "text/highlight.h"
#include "text/number.h"

namespace larkspin {

namespace {

std::string marked(const std::string& name, const std::string& text) {
    return highlight(name, text, "<b><u>" + text + "</b></u>");
}

} // namespace

void PlaySelection::play(const std::string& text) {
    if (!searchrows(state_, state_.masterList, text)) {
        const bool silent = state_.silnt;
        reply_.sayOrBox("your gay song was not found");
        if (!silent)
            choices_.closeselection();
        return;
    }
    state_.searchTerm = text;
    transport_.endPauseMark();
    if (choices_.areOpen())
        askForChoice();
    else
        playOnlyHit(text);
}

void PlaySelection::playOnlyHit(const std::string& text) {
    state_.choiceList.setCurrentIndex(0);
    const Song song = songOfRow(state_.choiceList.currentRow());
    transport_.start(
        {.song = song,
         .message = startMessage("playing:  <b>", std::to_string(state_.masterIndex() + 1),
                                 marked(song.name, text), song),
         .choices = SongStart::Choices::ended,
         .whenOpened = [this] { choices_.closeselection(); }});
}

// The song that plays goes on; masterIndex stands on the last hit.
void PlaySelection::askForChoice() {
    choices_.closeselection();
    if (state_.silnt) {
        choices_.show();
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
    const Song song = songOfRow(state_.masterList.currentRow());
    transport_.start(
        {.song = song,
         .message = startMessage("playing:  <b>", std::to_string(state_.masterIndex() + 1),
                                 song.name, song),
         .behindMessage = [this] { choices_.stopListening(); }});
}

void PlaySelection::rnd() {
    if (state_.masterList.empty()) {
        reply_.sayOrBox("no mp3s found, stupid");
        return;
    }
    choices_.closeselection();
    randp3();
}

void PlaySelection::randp3() {
    transport_.startPicked(
        [this](const auto& stillWanted) { return randomPick_.randompick(stillWanted); },
        [this] {
            const Song song = songOfRow(state_.masterList.currentRow());
            return SongStart{.song = song,
                             .message = startMessage("random:  <b>",
                                                     std::to_string(state_.masterIndex() + 1),
                                                     song.name, song),
                             .choices = SongStart::Choices::ended};
        });
}

void PlaySelection::rnd(const std::string& text) {
    choices_.closeselection();
    if (!searchrows(state_, state_.masterList, text)) {
        reply_.sayOrBox("your gay song was not found");
        return;
    }
    transport_.startPicked(
        [this](const auto& stillWanted) { return randomPick_.pickFromChoices(stillWanted); },
        [this, &text] { return startOfRandomHit(text); });
}

SongStart PlaySelection::startOfRandomHit(const std::string& text) {
    const int picked = state_.choiceList.currentIndex();
    const Song song = songOfRow(state_.choiceList.currentRow());
    const std::string number =
        std::to_string(picked + 1) + "/" + std::to_string(state_.choiceList.count());
    return {.song = song,
            .message = startMessage("random:  <b>", number, marked(song.name, text), song),
            .position = SongStart::Position::leftAlone,
            .choices = SongStart::Choices::replaced,
            .behindMessage = [this, text, picked] { placeBehindRandomHit(text, picked); }};
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

} // namespace larkspin
