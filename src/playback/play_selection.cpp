#include "playback/play_selection.h"

#include "chat/reply.h"
#include "library/playlist.h"
#include "playback/choices.h"
#include "playback/random_pick.h"
#include "playback/transport.h"
#include "shell/app_state.h"
#include "text/number.h"

namespace larkspin {

void PlaySelection::play(const std::string& text) {
    if (!search(text)) {
        if (!state_.silnt)
            choices_.closeselection();
        reply_.sayOrBox("your gay song was not found");
        return;
    }
    state_.searchTerm = text;
    transport_.endPauseMark();
    if (choices_.areOpen())
        askForChoice();
    else
        playOnlyHit(text);
}

// A search takes the place of choices that were open, even when it finds nothing. Shuffle, which
// waited for the owner's choice, goes on then.
bool PlaySelection::search(const std::string& text) {
    const bool wereOpen = choices_.areOpen();
    const bool found = searchrows(state_, state_.masterList, text);
    if (wereOpen && !found)
        transport_.resumeShuffle();
    return found;
}

void PlaySelection::playOnlyHit(const std::string& text) {
    state_.choiceList.setCurrentIndex(0);
    const Song song = songOfRow(state_.choiceList.currentRow());
    transport_.start(
        {.song = song,
         .message = startMessage("playing:  <b>", std::to_string(state_.masterIndex() + 1),
                                 markedName(song.name, text), song),
         .choices = SongStart::Choices::ended,
         .whenOpened = [this] { choices_.closeselection(); }});
}

// The song that plays goes on; masterIndex stands on the last hit.
void PlaySelection::askForChoice() {
    choices_.ask();
    if (state_.silnt) {
        choices_.show();
        return;
    }
    const std::string& trigger = state_.trigger;
    reply_.saychat("scroll <b>" + std::to_string(state_.choiceList.count()) + "</b> choices?  <b>" +
                   trigger + "yes </b>, <b>" + trigger + "no</b>, or <b>" + trigger + "view");
}

void PlaySelection::selp3(int choice) {
    state_.choiceList.setCurrentIndex(choice - 1);
    const Song song = songOfRow(state_.choiceList.currentRow());
    transport_.start({.song = song,
                      .message = startMessage("playing choice:  <b>", std::to_string(choice),
                                              markedName(song.name, state_.searchTerm), song),
                      .position = SongStart::Position::goneBack,
                      .choices = SongStart::Choices::replaced,
                      .whenOpened = [this] {
                          choices_.closeselection();
                          choices_.markNormal();
                      }});
}

// A negative number isn't refused. The list can't make such a row current, so the row that is
// current starts.
void PlaySelection::num(const std::string& number) {
    const int wanted = wholeNumber16(number).value_or(0);
    if (wanted == 0 || wanted > state_.masterList.count()) {
        reply_.saychat("invalid number stupid");
        return;
    }
    state_.setMasterIndex(wanted - 1);
    SongStart start = transport_.currentRowStart("playing:  <b>");
    start.afterMessage = [this] { choices_.stopListening(); };
    transport_.start(start);
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
            SongStart start = transport_.currentRowStart("random:  <b>");
            start.choices = SongStart::Choices::ended;
            return start;
        });
}

void PlaySelection::rndOf(const std::string& text) {
    choices_.closeselection();
    if (!search(text)) {
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
    const int hits = state_.choiceList.count(), last = state_.masterIndex();
    const std::string number = std::to_string(picked + 1) + "/" + std::to_string(hits);
    return {.song = song,
            .message = startMessage("random:  <b>", number, markedName(song.name, text), song),
            .position = SongStart::Position::leftAlone,
            .choices = SongStart::Choices::replaced,
            .afterMessage = [this, text, picked, before = last - (hits - picked)] {
                placeAtRandomHit(text, picked, before);
            }};
}

// The search has left masterIndex on the last hit. Counting back from there finds the picked
// row when the hits lie next to each other; otherwise some other row, and `next` goes on from
// that one.
void PlaySelection::placeAtRandomHit(const std::string& text, int picked, int before) {
    if (text.empty()) {
        state_.setMasterIndex(picked);
        return;
    }
    state_.resumeIndex = std::to_string(before);
    state_.setMasterIndex(before + 1);
}

} // namespace larkspin
