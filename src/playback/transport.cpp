#include "playback/transport.h"

#include "chat/reply.h"
#include "chat/scanner.h"
#include "playback/media_control.h"
#include "playback/media_window.h"
#include "playback/play_counters.h"
#include "playback/sliders.h"
#include "shell/app_state.h"
#include "shell/files.h"
#include "shell/settings.h"
#include "text/fold.h"
#include "text/wildcard.h"

namespace larkspin {

namespace {

// The media control's own size, in twips.
constexpr int controlWidth = 3855;
constexpr int controlHeight = 625;

} // namespace

std::string extensionTag(std::string_view extension) {
    const std::string tag = foldCase(" (<b>" + std::string(extension) + "</b>)");
    return fits(tag, " (<b>.mp3*") ? "" : tag;
}

void Transport::stop() {
    ++turns_;
    endPauseMark();
    state_.Timer1.disable();
    player_.Stop();
    state_.playMark = idleMark; // so that this end isn't counted
    if (window_.isMini())
        window_.showLength();
    reply_.saychat("larkspin player [stopped]");
}

void Transport::pause() {
    if (nothingLoaded()) {
        reply_.saychat("wtf are you gonna pause?");
    } else if (state_.pauseMark == pausedMark) {
        reply_.saychat("already paused you dumbass");
    } else {
        reply_.saychat("paused:  " + currentName());
        player_.Pause();
        state_.pauseMark = pausedMark;
    }
}

void Transport::resume() {
    if (nothingLoaded()) {
        reply_.saychat("wtf are you gonna resume?");
    } else if (state_.pauseMark == unpausedMark) {
        reply_.saychat("already playing something you dick");
    } else {
        reply_.saychat("resumed:  " + currentName());
        player_.Play();
        state_.pauseMark = unpausedMark;
    }
}

void Transport::nexp3() {
    moveToNextRow();
    startCurrentRow("next:  <b>");
}

void Transport::prep3() {
    const int index = state_.masterIndex();
    state_.setMasterIndex(index <= 0 ? state_.masterList.count() - 1 : index - 1);
    startCurrentRow("previous:  <b>");
}

void Transport::tempp3() {
    const Song song = lastSong();
    if (song.title().empty()) {
        reply_.sayOrBox("nothing to play, fag");
        return;
    }
    beginStart();
    if (!files_.exists(song.path())) {
        reply_.saychat("not found, refresh the directory (" + song.directory + ")");
        return;
    }
    openFile(song.path());
    counters_.show(counters_.count(song.title()) + 1);
    if (!tellStart("playing temp:  " + song.name))
        return;
    showStarted();
    offerAsChoice(song.title());
    resumeModeTick();
}

bool Transport::startCurrentRow(const std::string& head) {
    const Song song = songOfRow(state_.masterList.currentRow());
    if (!open(song))
        return false;
    if (!announce(head, std::to_string(state_.masterIndex() + 1), song.name, song))
        return false;
    showStarted();
    keepPosition();
    remember(song);
    offerAsChoice(song.title());
    resumeModeTick();
    return true;
}

bool Transport::open(const Song& song) {
    beginStart();
    if (!isThere(song))
        return false;
    openFile(song.path());
    return true;
}

void Transport::beginStart() {
    endPauseMark();
    state_.Timer1.disable();
}

void Transport::endPauseMark() {
    if (state_.pauseMark == pausedMark)
        state_.pauseMark = unpausedMark;
}

bool Transport::isThere(const Song& song) {
    if (files_.exists(song.path()))
        return true;
    reply_.saychat("not found, refresh the directory (" + song.directory +
                   (isDriveRoot(song.directory) ? ")" : "\\)"));
    return false;
}

void Transport::openFile(const std::string& path) {
    ++turns_;
    player_.Open(path);
    sliders_.HScroll2_Change();
}

bool Transport::tellStart(const std::string& message) {
    const unsigned turn = turns_;
    reply_.saychat(message);
    return turn == turns_;
}

bool Transport::announce(const std::string& head, const std::string& number,
                         const std::string& name, const Song& song) {
    return tellStart(head + number + "</b>.  " + name + extensionTag(song.extension));
}

void Transport::dressplayer() {
    player_.setOwnControlsVisible(false);
    player_.setSize(controlWidth, controlHeight);
}

void Transport::showStarted() {
    dressplayer();
    state_.tempTitle.clear();
    state_.playMark = playingMark;
}

void Transport::keepPosition() {
    state_.resumeIndex = std::to_string(state_.masterIndex());
}

void Transport::remember(const Song& song) {
    store(song);
    counters_.show(counters_.count(song.title()) + 1);
}

void Transport::store(const Song& song) {
    settings_.put("play", song.title());
    settings_.put("playpath", song.directory);
}

void Transport::offerAsChoice(const std::string& title) {
    if (state_.choiceList.count() > 1)
        return;
    replaceChoices(title);
    NiteScan2_.stopscan();
}

void Transport::replaceChoices(const std::string& title) {
    state_.choiceList.clear();
    state_.choiceList.add(title);
}

void Transport::resumeModeTick() {
    if (state_.modeIsOn())
        state_.Timer1.enable();
}

// Behind the last row the first one follows.
void Transport::moveToNextRow() {
    const int next = state_.masterIndex() + 1;
    state_.setMasterIndex(next == state_.masterList.count() ? 0 : next);
}

bool Transport::nothingLoaded() {
    const PlayState now = player_.PlayState();
    return now == PlayState::stopped || now == PlayState::closed;
}

Song Transport::lastSong() {
    return songOfFile(reply_.yochoose(Choice::play), reply_.yochoose(Choice::playpath));
}

std::string Transport::currentName() {
    return state_.tempTitle.empty() ? lastSong().name : songOfFile(state_.tempTitle, "").name;
}

} // namespace larkspin
