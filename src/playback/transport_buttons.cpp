#include "playback/transport_buttons.h"

#include "playback/choices.h"
#include "playback/media_control.h"
#include "playback/random_pick.h"
#include "playback/transport.h"
#include "shell/app_state.h"
#include "shell/chosen_files.h"
#include "shell/dialogs.h"
#include "shell/media_types.h"
#include "shell/this_run.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace larkspin {

void TransportButtons::previous() {
    transport_.moveToPreviousRow();
    transport_.start(currentRow());
}

void TransportButtons::next() {
    if (state_.crand) {
        nextAtRandom();
        return;
    }
    transport_.moveToNextRow();
    transport_.start(currentRow());
}

void TransportButtons::nextAtRandom() {
    if (state_.masterList.empty()) {
        dialogs_.box("no mp3s found, stupid");
        return;
    }
    transport_.startPicked(
        [this](const auto& stillWanted) {
            return randomPick_.randompick(stillWanted, [this] { choices_.closeselection(); });
        },
        [this] {
            endPause();
            SongStart start = currentRow();
            start.choices = SongStart::Choices::leftAlone; // the pick has taken their place
            return start;
        });
}

void TransportButtons::pauseOrResume() {
    if (state_.pauseMark == unpausedMark)
        pause();
    else if (state_.pauseMark == pausedMark)
        resume();
}

void TransportButtons::pause() {
    state_.pauseMark = pausedMark;
    player_.Pause();
}

void TransportButtons::resume() {
    state_.pauseMark = unpausedMark;
    player_.Play();
}

void TransportButtons::stopOrPlay() {
    if (state_.playMark == playingMark)
        stop();
    else
        playLast();
}

void TransportButtons::stop() {
    transport_.halt();
}

void TransportButtons::playLast() {
    const Song song = transport_.lastSong();
    if (song.title().empty()) {
        dialogs_.box("nothing to play dumbass");
        return;
    }
    endPause();
    transport_.start({.song = song,
                      .position = SongStart::Position::leftAlone,
                      .count = SongStart::Count::stored,
                      .isRemembered = false}); // it is stored already
}

void TransportButtons::openFile() {
    // What is offered at first is what there has always been, unless the filter shows more.
    std::vector types = {fileTypeOf(mediaTypeOf(allMediaTypes)),
                         fileTypeOf(mediaTypeOf(anyMediaType))};
    if (mediaTypeOf(state_.mediaFilter).age == MediaType::Age::later)
        std::ranges::reverse(types);
    const ThisRun run(state_);
    const auto path = dialogs_.openFile({.title = "Open a media file", .types = std::move(types)});
    if (path && !thoseThere({*path}, files_, dialogs_).empty() && run.lasts())
        transport_.openFromDisk(*path);
}

SongStart TransportButtons::currentRow() const {
    return {.song = songOfRow(state_.masterList.currentRow()), .count = SongStart::Count::stored};
}

// The mark of a pause may also stand while a song plays. If the start finds no file, that song then
// stays paused.
void TransportButtons::endPause() {
    if (state_.pauseMark != pausedMark)
        return;
    state_.pauseMark = unpausedMark;
    player_.Pause();
}

} // namespace larkspin
