#include "playback/mode_tick.h"

#include "chat/reply.h"
#include "chat/scanner.h"
#include "playback/media_control.h"
#include "playback/play_counters.h"
#include "playback/random_pick.h"
#include "playback/transport.h"
#include "shell/app_state.h"

namespace larkspin {

void ModeTick::tick() {
    const PlayState now = player_.PlayState();
    if (now == PlayState::playing || now == PlayState::waiting)
        return;
    if (state_.rep)
        repeatSong();
    else if (state_.crand)
        shuffleOn();
    else if (state_.cintz)
        continueOn();
    else
        repeatSong();
}

bool ModeTick::hasEnded() {
    return player_.PlayState() == PlayState::stopped;
}

void ModeTick::repeatSong() {
    if (!hasEnded()) {
        // Paused, as a rule: the shuffle's first step still tells of an empty list.
        if (player_.PlayState() != PlayState::waiting)
            shuffleOn();
        return;
    }
    const Song last = transport_.lastSong();
    std::string name = last.name;
    if (!state_.tempTitle.empty()) {
        name = songOfFile(state_.tempTitle, "").name;
        transport_.openFile(player_.FileName());
    } else if (!openCurrentRow(last)) {
        return;
    }
    counters_.bumpcount();
    counters_.bumpPlayed();
    if (!transport_.tellStart("repeat:  " + name + extensionTag(last.extension)))
        return;
    transport_.dressplayer();
    state_.playMark = playingMark;
}

void ModeTick::shuffleOn() {
    if (state_.playlistView.empty()) {
        reply_.sayOrBox("no mp3s found, retard");
        state_.Timer1.disable();
        return;
    }
    if (!hasEnded())
        return;
    counters_.bumpcount();
    randomPick_.randompick();
    const Song song = songOfRow(state_.masterList.currentRow());
    if (!openCurrentRow(song))
        return;
    counters_.bumpPlayed();
    if (!showCurrentRow("random:  <b>", song))
        return;
    NiteScan2_.stopscan();
    store(song);
}

void ModeTick::continueOn() {
    if (!hasEnded())
        return;
    transport_.moveToNextRow();
    const Song song = songOfRow(state_.masterList.currentRow());
    if (!openCurrentRow(song))
        return;
    // The finished song is still the stored one; behind the message it may not be.
    counters_.bumpcount();
    counters_.bumpPlayed();
    if (!showCurrentRow("next:  <b>", song))
        return;
    store(song);
    transport_.offerAsChoice(song.title());
}

// A song that is gone silences the mode until the next start by hand.
bool ModeTick::openCurrentRow(const Song& song) {
    if (!transport_.isThere(song)) {
        state_.Timer1.disable();
        return false;
    }
    transport_.openFile(song.path());
    return true;
}

bool ModeTick::showCurrentRow(const std::string& head, const Song& song) {
    if (!transport_.announce(head, std::to_string(state_.masterIndex() + 1), song.name, song))
        return false;
    transport_.showStarted();
    transport_.keepPosition();
    return true;
}

// Here the menu shows the stored count of the new song, not the coming one.
void ModeTick::store(const Song& song) {
    transport_.store(song);
    counters_.show(counters_.count(song.title()));
}

void ModeTick::checkEndWithoutMode() {
    if (state_.modeIsOn() || !hasEnded() || state_.playMark != playingMark)
        return;
    state_.playMark = idleMark;
    counters_.bumpPlayed();
    counters_.bumpcount();
}

} // namespace larkspin
