#include "playback/transport.h"

#include "chat/reply.h"
#include "library/playlist.h"
#include "playback/choices.h"
#include "playback/media_control.h"
#include "playback/play_counters.h"
#include "playback/sliders.h"
#include "shell/app_state.h"
#include "shell/files.h"
#include "shell/pause.h"
#include "shell/this_run.h"
#include "text/fold.h"
#include "text/highlight.h"
#include "text/number.h"
#include "text/stand_ins.h"
#include "text/wildcard.h"

namespace larkspin {

namespace {

// The media control's own size, in twips.
constexpr int controlWidth = 3855;
constexpr int controlHeight = 625;

// How long a player is waited for that doesn't let go of its file.
constexpr auto longestRelease = std::chrono::seconds(5);
constexpr double releaseInterval = 0.02; // seconds between two looks

} // namespace

std::string extensionTag(std::string_view extension) {
    const std::string tag = foldCase(" (<b>" + std::string(extension) + "</b>)");
    return fits(tag, " (<b>.mp3*") ? "" : tag;
}

std::string startMessage(std::string_view head, const std::string& number, const std::string& name,
                         const Song& song) {
    return std::string(head) + number + "</b>.  " + name + extensionTag(song.extension);
}

std::string markedName(const std::string& name, const std::string& words) {
    const std::string stored = asStored(words); // as the name holds them, so that they make no tag
    return highlight(name, stored, "<b><u>" + stored + "</b></u>");
}

void Transport::stop() {
    halt();
    reply_.saychat("larkspin player [stopped]");
}

void Transport::halt() {
    // Starts that are under way are overtaken.
    ++turns_;
    endPauseMark();
    state_.Timer1.disable();
    player_.Stop();
    state_.playMark = idleMark; // so that this end isn't counted
    onHalt_();
}

void Transport::pause() {
    if (nothingLoaded()) {
        reply_.saychat("wtf are you gonna pause?");
    } else if (state_.pauseMark == pausedMark) {
        reply_.saychat("already paused you dumbass");
    } else {
        // A command that comes in during the message may have started or stopped a song.
        const unsigned turn = turns_;
        reply_.saychat("paused:  " + currentName());
        if (turn != turns_)
            return; // another song has been started meanwhile, or a stop came
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
        const unsigned turn = turns_;
        reply_.saychat("resumed:  " + currentName());
        if (turn != turns_)
            return;
        player_.Play();
        state_.pauseMark = unpausedMark;
    }
}

void Transport::nexp3() {
    moveToNextRow();
    start(currentRowStart("next:  <b>"));
}

void Transport::prep3() {
    moveToPreviousRow();
    start(currentRowStart("previous:  <b>"));
}

void Transport::tempp3() {
    const Song song = lastSong();
    if (song.title().empty()) {
        reply_.sayOrBox("nothing to play, fag");
        return;
    }
    start({.song = song,
           .message = "playing temp:  " + song.name,
           .position = SongStart::Position::leftAlone,
           .count = SongStart::Count::leftAlone,
           .isRemembered = false,
           .notFound = "not found, refresh the directory (" + song.directory + ")",
           .whenOpened = [&] { counters_.show(counters_.count(song.title()) + 1); }});
}

SongStart Transport::currentRowStart(std::string_view head) const {
    const Song song = songOfRow(state_.masterList.currentRow());
    return {.song = song,
            .message =
                startMessage(head, std::to_string(state_.masterIndex() + 1), song.name, song)};
}

void Transport::openFromDisk(const std::string& path) {
    const Song song = songOfPath(path);
    if (song.title().empty())
        return; // a directory
    start({.song = song,
           .message = "playing:  " + song.name,
           .position = SongStart::Position::leftAlone,
           .choices = SongStart::Choices::leftAlone,
           .count = SongStart::Count::leftAlone,
           .isRemembered = false,
           .endsPause = false,
           .sendsVolume = false,
           .tempTitle = song.title(),
           .whenOpened = [this] { state_.playMark = playingMark; },
           .afterMessage = [this] { state_.playtz = "played n/a times"; }});
}

Transport::Outcome Transport::startPicked(const std::function<bool(const StillWanted&)>& pick,
                                          const std::function<SongStart()>& describe) {
    const unsigned turn = turns_;
    if (!pick([this, turn] { return turns_ == turn; }))
        return Outcome::overtaken;
    const Outcome outcome = begin(describe(), turn);
    const bool isMissing = outcome == Outcome::notFound || outcome == Outcome::unanswered;
    if (isMissing && !choices_.areOpen())
        takeBackPick();
    return outcome;
}

// The pick has made its song the only choice. It couldn't be started, so the song that plays takes
// that place again.
void Transport::takeBackPick() {
    if (const auto song = lastSong_.inHand())
        choices_.replace(song->title());
    else
        choices_.clear();
}

// A start waits twice: while the disk is asked for the file, and while the message is said. Another
// start, or a stop, may come in there. It takes the next turn, and the rest of this start is
// dropped.
Transport::Outcome Transport::begin(const SongStart& start, unsigned turn) {
    if (turn != turns_)
        return Outcome::overtaken;
    if (start.endsPause)
        endPauseMark();
    // The mode tick must not start a song while this one waits for its file or its message.
    state_.Timer1.disable();
    const Row row = state_.masterList.share(state_.masterIndex());
    const Outcome found = lookFor(start, turn);
    if (turn != turns_)
        return Outcome::overtaken;
    if (found != Outcome::started)
        return found;
    if (start.position == SongStart::Position::kept)
        returnTo(row);
    const unsigned own = ++turns_;
    openFile(start);
    if (start.whenOpened)
        start.whenOpened();
    noteOpened(start);
    if (!start.message.empty())
        reply_.saychat(start.message);
    if (own != turns_)
        return Outcome::overtaken;
    if (start.afterMessage)
        start.afterMessage();
    dressplayer();
    state_.playMark = playingMark;
    place(start.position);
    showCount(start);
    settleChoices(start.choices, start.song.title());
    if (state_.modeIsOn())
        state_.Timer1.enable();
    return Outcome::started;
}

// Events are served while the disk takes its time.
Transport::Outcome Transport::lookFor(const SongStart& start, unsigned turn) {
    if (!start.tempTitle.empty())
        return Outcome::started;
    const Files::Presence presence = files_.presence(start.song.path());
    if (turn != turns_)
        return Outcome::overtaken;
    if (presence == Files::Presence::there)
        return Outcome::started;
    if (presence == Files::Presence::unanswered) {
        const std::string text = std::string(noAnswer) + ":  ";
        tellUnstarted(text + "<b>" + start.song.directory, text + start.song.directory);
        return Outcome::unanswered;
    }
    if (!start.isMissingTold)
        tellMissing(start);
    return Outcome::notFound;
}

void Transport::tellMissing(const SongStart& start) {
    const std::string& directory = start.song.directory;
    const std::string usual = "not found, refresh the directory (" + directory +
                              (isDriveRoot(directory) ? ")" : "\\)"),
                      text = start.notFound.empty() ? usual : start.notFound;
    tellUnstarted(text, text);
}

// A box, in silent mode, must not hold up what the start is a part of.
void Transport::tellUnstarted(const std::string& said, const std::string& boxed) {
    if (!state_.silnt)
        return reply_.saychat(said);
    loop_.post([this, boxed, run = ThisRun(state_)] {
        if (run.lasts())
            reply_.sayOrBox(boxed);
    });
}

void Transport::openFile(const SongStart& start) {
    player_.Open(start.song.path());
    if (start.sendsVolume)
        sliders_.HScroll2_Change();
}

// Done before the message, since what comes in during the message is about this song.
void Transport::noteOpened(const SongStart& start) {
    state_.tempTitle = start.tempTitle;
    if (!start.tempTitle.empty())
        return;
    if (start.isRemembered)
        lastSong_.take(start.song);
    else
        lastSong_.takeAgain();
}

// The player shows none of its own controls.
void Transport::dressplayer() {
    player_.setOwnControlsVisible(false);
    player_.setSize(controlWidth, controlHeight);
}

void Transport::place(SongStart::Position position) {
    if (position == SongStart::Position::kept)
        state_.resumeIndex = std::to_string(state_.masterIndex());
    else if (position == SongStart::Position::goneBack)
        state_.setMasterIndex(resumeRow());
}

// Makes the row current again, whatever has become current while the disk was asked.
void Transport::returnTo(const Row& row) {
    const int index = findRow(state_.masterList, row, state_.masterIndex());
    if (index >= 0)
        state_.setMasterIndex(index);
}

void Transport::showCount(const SongStart& start) {
    const std::string title = start.song.title();
    if (start.count != SongStart::Count::leftAlone)
        counters_.show(counters_.count(title) + (start.count == SongStart::Count::coming ? 1 : 0));
}

void Transport::settleChoices(SongStart::Choices choices, const std::string& title) {
    if (choices == SongStart::Choices::offered)
        choices_.offer(title);
    else if (choices == SongStart::Choices::replaced)
        choices_.replace(title);
    else if (choices == SongStart::Choices::ended)
        choices_.stopListening();
}

void Transport::close() {
    ++turns_;
    lastSong_.letGo();
    player_.Open("");
}

void Transport::releasesong() {
    ++turns_;
    lastSong_.letGo();
    endPauseMark();
    state_.playMark = idleMark;
    player_.Stop();
    player_.Open("");
    dressplayer();
    const Nanoseconds latest = loop_.now() + longestRelease;
    const auto nothingStarted = [this] { return state_.playMark == idleMark; };
    while (nothingStarted() && player_.PlayState() != PlayState::closed && loop_.now() < latest)
        Pause{loop_}(releaseInterval);
}

void Transport::endPauseMark() {
    if (state_.pauseMark == pausedMark)
        state_.pauseMark = unpausedMark;
}

void Transport::holdShuffle() {
    if (state_.crand)
        state_.Timer1.disable();
}

void Transport::resumeShuffle() {
    if (state_.crand && player_.PlayState() == PlayState::playing)
        state_.Timer1.enable();
}

void Transport::moveToNextRow() {
    const int next = state_.masterIndex() + 1;
    state_.setMasterIndex(next == state_.masterList.count() ? 0 : next);
}

void Transport::moveToPreviousRow() {
    const int index = state_.masterIndex();
    state_.setMasterIndex(index <= 0 ? state_.masterList.count() - 1 : index - 1);
}

bool Transport::nothingLoaded() {
    const PlayState now = player_.PlayState();
    return now == PlayState::stopped || now == PlayState::closed;
}

int Transport::resumeRow() const {
    return wholeNumber16(state_.resumeIndex).value_or(-1);
}

std::string Transport::currentName() const {
    return state_.tempTitle.empty() ? lastSong().name : songOfFile(state_.tempTitle, "").name;
}

} // namespace larkspin
