#include "playback/remote_control.h"

#include "library/playlist_row.h"
#include "playback/media_control.h"
#include "playback/play_modes.h"
#include "playback/sliders.h"
#include "playback/transport_buttons.h"
#include "shell/app_state.h"
#include "text/number.h"

#include <algorithm>
#include <utility>

namespace larkspin {

namespace {

using std::chrono::microseconds;

// A day, which is longer than anything that can sensibly be asked for. A player may tell any
// number.
constexpr double longest = 86400; // seconds

microseconds ofSeconds(double seconds) {
    return microseconds(rounded(std::clamp(seconds, 0.0, longest) * 1e6));
}

double inSeconds(microseconds span) {
    return std::chrono::duration<double>(span).count();
}

// From a share to steps of a slider, of which each is a hundredth. A share that makes no sense
// gives 0.
int steps(double share, int most) {
    return static_cast<int>(rounded(std::min(std::max(0.0, share * 100), double(most))));
}

} // namespace

RemoteView RemoteControl::view() const {
    RemoteView view;
    view.volume = state_.HScroll2;
    view.tempo = state_.HScroll3;
    view.shuffle = state_.crand;
    if (state_.rep)
        view.loop = RemoteView::Loop::song;
    else if (state_.cintz)
        view.loop = RemoteView::Loop::list;
    view.path = player_.FileName();
    if (view.path.empty())
        return view;
    view.name = songOfPath(view.path).name;
    view.tags = player_.tags();
    view.length = ofSeconds(player_.Duration());
    // A song that is still being opened counts as playing.
    if (player_.PlayState() == PlayState::paused)
        view.status = RemoteView::Status::paused;
    else if (!isStopped())
        view.status = RemoteView::Status::playing;
    return view;
}

microseconds RemoteControl::position() const {
    return ofSeconds(player_.CurrentPosition());
}

void RemoteControl::play() {
    if (isStopped())
        buttons_.playLast();
    else
        buttons_.resume();
}

void RemoteControl::pause() {
    if (!isStopped())
        buttons_.pause();
}

void RemoteControl::playOrPause() {
    if (player_.PlayState() == PlayState::playing)
        pause();
    else
        play();
}

void RemoteControl::stop() {
    if (!isStopped())
        buttons_.stop();
}

void RemoteControl::next() {
    buttons_.next();
}

void RemoteControl::previous() {
    buttons_.previous();
}

bool RemoteControl::press(std::string_view button) {
    static constexpr std::pair<std::string_view, void (RemoteControl::*)()> buttons[] = {
        {"play-pause", &RemoteControl::playOrPause},
        {"next", &RemoteControl::next},
        {"previous", &RemoteControl::previous}};
    for (const auto& [name, operation] : buttons)
        if (name == button) {
            (this->*operation)();
            return true;
        }
    return false;
}

void RemoteControl::moveTo(microseconds place) {
    if (isStopped())
        return;
    const double seconds = std::max(inSeconds(place), 0.0);
    const double length = player_.Duration();
    if (length > 0 && seconds > length)
        next();
    else
        player_.setCurrentPosition(seconds);
}

// Added up in seconds: anybody may ask for any number, and microseconds might overflow.
void RemoteControl::moveBy(microseconds span) {
    const double place = player_.CurrentPosition() + inSeconds(span);
    moveTo(microseconds(rounded(std::clamp(place, 0.0, longest) * 1e6)));
}

void RemoteControl::setVolume(double share) {
    sliders_.moveVolume(steps(share, Sliders::mostVolume));
}

void RemoteControl::setTempo(double factor) {
    sliders_.moveTempo(steps(factor, Sliders::mostTempo));
}

void RemoteControl::setLoop(RemoteView::Loop loop) {
    modes_.set(&AppState::rep, loop == RemoteView::Loop::song);
    modes_.set(&AppState::cintz, loop == RemoteView::Loop::list);
}

void RemoteControl::setShuffle(bool on) {
    modes_.set(&AppState::crand, on);
}

bool RemoteControl::isStopped() const {
    const PlayState now = player_.PlayState();
    return now == PlayState::stopped || now == PlayState::closed;
}

} // namespace larkspin
