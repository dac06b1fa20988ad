#include "playback/playback.h"

#include "chat/commands_window.h"
#include "playback/media_control.h"
#include "shell/app_state.h"
#include "shell/shell.h"

namespace larkspin {

namespace {

// Hundredths of a decibel, until the first song brings the slider's volume.
constexpr int firstVolume = -500;

} // namespace

Playback::Playback(const Core& core, const PlaybackNeeds& needs) : core_(core), needs_(needs) {
    choices.stops.controls = stopWindow.controls();
    needs_.commandsWindow.connect({.onDoubleClick = [this] { dialogue.startClicked(); },
                                   .onClose = [this] { dialogue.close(); },
                                   .onCommands = [this] { choices.giveWay(); }});
}

void Playback::load(const StoredSettings& stored) {
    AppState& state = core_.state;
    state.Timer1.connect(core_.loop, [this] { modeTick.tick(); });
    sliders.restore(stored.get("tempo"), stored.get("volume"));
    loadFlag(state.rep, stored.get("repeat"));
    loadFlag(state.crand, stored.get("shuffle"));
    loadFlag(state.cintz, stored.get("continue"));
    state.crand = state.crand && !state.rep; // one at most, as when they are saved
    state.cintz = state.cintz && !state.rep && !state.crand;
    choices.load();
    lastSong.load(stored);
    counters.show(counters.count(state.play));
    needs_.player.setVolume(firstVolume);
}

void Playback::save(SettingsChanges& changes) {
    lastSong.save(changes);
    const AppState& state = core_.state;
    changes.emplace_back("tempo", std::to_string(state.HScroll3));
    changes.emplace_back("volume", std::to_string(state.HScroll2));
    changes.emplace_back("repeat", yesNo(state.rep));
    changes.emplace_back("shuffle", yesNo(state.crand && !state.rep));
    changes.emplace_back("continue", yesNo(state.cintz && !state.rep && !state.crand));
}

void Playback::unload() {
    choices.unload();
    transport.close();
}

bool Playback::isPlaying() {
    return needs_.player.PlayState() == PlayState::playing;
}

} // namespace larkspin
