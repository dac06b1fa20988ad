#include "playback/mode_tick.h"

#include "chat/reply.h"
#include "library/playlist_row.h"
#include "playback/media_control.h"
#include "playback/play_counters.h"
#include "playback/random_pick.h"
#include "playback/song_failures.h"
#include "shell/app_state.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

constexpr int mostMissing = 100;    // songs in a row; after that the mode gives up
constexpr std::size_t mostTold = 5; // directories in which they are missing

class AtWork {
public:
    explicit AtWork(bool& isAtWork) : isAtWork_(isAtWork) { isAtWork_ = true; }
    ~AtWork() { isAtWork_ = false; }
    AtWork(const AtWork&) = delete;
    AtWork& operator=(const AtWork&) = delete;

private:
    bool& isAtWork_;
};

} // namespace

// A tick can come inside the one before it, which may wait in its pick or its message; the same end
// would be counted twice. What is left to say comes after that, since it may be a box, which waits
// for the owner.
void ModeTick::tick() {
    if (isAtWork_)
        return;
    std::string complaint;
    {
        const AtWork atWork(isAtWork_);
        complaint = followMode();
    }
    if (!complaint.empty())
        reply_.sayOrBox(complaint);
}

std::string ModeTick::followMode() {
    const PlayState now = player_.PlayState();
    if (now == PlayState::playing || now == PlayState::waiting)
        return {};
    failures_.tell();
    if (wasStopped())
        return {};
    // Repeating the song goes before the two other modes.
    if (state_.crand && !state_.rep)
        return shuffleOn();
    if (state_.cintz && !state_.rep) {
        continueOn();
        return {};
    }
    return repeatSong();
}

bool ModeTick::hasEnded() {
    return player_.PlayState() == PlayState::stopped;
}

// Whether somebody has stopped the song, perhaps during a message that was just said. A stop halts
// the timer of the tick.
bool ModeTick::wasStopped() {
    return !state_.Timer1.enabled();
}

std::string ModeTick::repeatSong() {
    // The song is usually paused here. An empty list is still told, which is the shuffle's first
    // step.
    if (!hasEnded())
        return player_.PlayState() == PlayState::waiting ? std::string() : shuffleOn();
    countEnd();
    const bool isFailure = player_.wasGivenUp();
    const Song last = transport_.lastSong();
    const std::string temp = state_.tempTitle;
    const std::string name = temp.empty() ? last.name : songOfFile(temp, "").name;
    const auto outcome =
        transport_.start({.song = temp.empty() ? last : songOfPath(player_.FileName()),
                          .message = "repeat:  " + name + extensionTag(last.extension),
                          .position = SongStart::Position::leftAlone,
                          .choices = SongStart::Choices::leftAlone,
                          .count = SongStart::Count::leftAlone,
                          .isRemembered = false,
                          .endsPause = false,
                          .tempTitle = temp,
                          .whenOpened = [this] { state_.playMark = playingMark; }});
    // It fails every two seconds, which is told once.
    if (isFailure && outcome == Transport::Outcome::started)
        failures_.leaveOut();
    return {};
}

std::string ModeTick::shuffleOn() {
    if (state_.playlistView.empty()) {
        state_.Timer1.disable();
        // The end of the song counts even if nothing can follow it.
        if (hasEnded())
            countEnd();
        return "no mp3s found, retard";
    }
    if (!hasEnded())
        return {};
    countEnd();
    passOverMissing(state_.crand, [this](Directories& told) {
        return transport_.startPicked(
            [this](const auto& stillWanted) { return randomPick_.randompick(stillWanted); },
            [this, &told] {
                SongStart start = nextStart("random:  <b>", told);
                start.choices = SongStart::Choices::ended;
                return start;
            });
    });
    return {};
}

void ModeTick::continueOn() {
    if (!hasEnded())
        return;
    countEnd();
    passOverMissing(state_.cintz, [this](Directories& told) {
        transport_.moveToNextRow();
        return transport_.start(nextStart("next:  <b>", told));
    });
}

SongStart ModeTick::nextStart(std::string_view head, Directories& told) const {
    SongStart start = transport_.currentRowStart(head);
    start.count = SongStart::Count::stored;
    start.endsPause = false;
    const bool isNew = told.insert(start.song.directory).second;
    // In silent mode this would be told in a box, and boxes would pile up while the owner is away.
    start.isMissingTold = !isNew || state_.silnt;
    start.whenOpened = [this] { state_.playMark = playingMark; };
    return start;
}

// One file that has been moved doesn't end the music. A disk that is gone does: the mode is silent
// then, until a song is started by hand.
void ModeTick::passOverMissing(const bool& mode,
                               const std::function<Transport::Outcome(Directories&)>& startNext) {
    Directories told;
    const int most =
        std::min(mostMissing, 2 * state_.masterList.count()); // two rounds of a shuffle
    for (int missing = 1; startNext(told) == Transport::Outcome::notFound; ++missing)
        if (!mode || missing >= most || told.size() >= mostTold)
            return;
}

// Counts the song that has ended. This has to come before the next one is picked, announced or
// found missing, since only until then the ended song is the one last started. The play mark tells
// that it hasn't been counted yet.
void ModeTick::countEnd() {
    if (std::exchange(state_.playMark, idleMark) == playingMark && !player_.wasGivenUp())
        counters_.countEnd();
}

void ModeTick::checkEndWithoutTick() {
    if (isAtWork_)
        return;
    if (!state_.Timer1.enabled())
        failures_.tell();
    if (!state_.modeIsOn() && hasEnded())
        countEnd();
}

} // namespace larkspin
