#include "playback/mode_tick.h"

#include "chat/reply.h"
#include "library/playlist_row.h"
#include "playback/media_control.h"
#include "playback/play_counters.h"
#include "playback/random_pick.h"
#include "playback/transport.h"
#include "shell/app_state.h"

#include <utility>

namespace larkspin {

namespace {

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

// A tick can come inside the one before, which waits in its pick or its message: the same end
// would be counted twice. What is left to say may come as a box, which waits for the owner.
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
    sayFailure();
    if (wasStopped())
        return {};
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

// In the message before, for one: the tick's timer has been halted by then.
bool ModeTick::wasStopped() {
    return !state_.Timer1.enabled();
}

// Once for a song that is repeated: it fails every two seconds.
void ModeTick::sayFailure() {
    const auto reason = player_.failure();
    if (!reason)
        return failedFile_.clear();
    const std::string file = player_.FileName();
    if (std::exchange(failedFile_, file) == file && state_.rep)
        return;
    reply_.saychat("<b>" + songOfPath(file).name + "</b> can't be played" +
                   (reason->empty() ? "" : ":  " + *reason));
}

std::string ModeTick::repeatSong() {
    // Paused, as a rule: the shuffle's first step still tells of an empty list.
    if (!hasEnded())
        return player_.PlayState() == PlayState::waiting ? std::string() : shuffleOn();
    const bool counts = !player_.wasGivenUp();
    const Song last = transport_.lastSong();
    const std::string temp = state_.tempTitle;
    const std::string name = temp.empty() ? last.name : songOfFile(temp, "").name;
    transport_.start({.song = temp.empty() ? last : songOfPath(player_.FileName()),
                      .message = "repeat:  " + name + extensionTag(last.extension),
                      .position = SongStart::Position::leftAlone,
                      .choices = SongStart::Choices::leftAlone,
                      .count = SongStart::Count::leftAlone,
                      .isRemembered = false,
                      .endsPause = false,
                      .tempTitle = temp,
                      .whenOpened = [&] {
                          if (counts)
                              counters_.countEnd();
                      }});
    return {};
}

// The finished song is counted before its successor is picked and announced, since it is the
// stored one only until then.
std::string ModeTick::shuffleOn() {
    if (state_.playlistView.empty()) {
        state_.Timer1.disable();
        return "no mp3s found, retard";
    }
    if (!hasEnded())
        return {};
    if (!player_.wasGivenUp())
        counters_.countEnd();
    transport_.startPicked(
        [this](const auto& stillWanted) { return randomPick_.randompick(stillWanted); },
        [this] {
            SongStart start = transport_.currentRowStart("random:  <b>");
            start.choices = SongStart::Choices::ended;
            start.count = SongStart::Count::stored;
            start.endsPause = false;
            return start;
        });
    return {};
}

void ModeTick::continueOn() {
    if (!hasEnded())
        return;
    const bool counts = !player_.wasGivenUp();
    transport_.moveToNextRow();
    SongStart start = transport_.currentRowStart("next:  <b>");
    start.count = SongStart::Count::stored;
    start.endsPause = false;
    start.whenOpened = [&] {
        if (counts)
            counters_.countEnd();
    };
    transport_.start(start);
}

void ModeTick::checkEndWithoutMode() {
    if (isAtWork_ || state_.modeIsOn() || !hasEnded() || state_.playMark != playingMark)
        return;
    state_.playMark = idleMark;
    if (player_.wasGivenUp())
        sayFailure();
    else
        counters_.countEnd();
}

} // namespace larkspin
