#include "playback/playback.h"

#include "playback/media_control.h"
#include "shell/app_state.h"
#include "shell/shell.h"

namespace larkspin {

namespace {

// Hundredths of a decibel, until the first song brings the slider's volume.
constexpr int firstVolume = -500;

} // namespace

Playback::Playback(const Core& core, const Needs& needs)
    : sliders(core, needs.player), counters(core, needs.directory), counterCommands(core, counters),
      choices(core, needs.NiteScan2), mediaWindow(core, needs.player),
      transport(core, needs.files, needs.player, sliders, counters, mediaWindow, choices),
      modes(core, transport),
      randomPick(core, choices, Chance(static_cast<std::uint64_t>(core.loop.now().count()))),
      selection(core, transport, choices, randomPick),
      modeTick(core, needs.player, transport, counters, randomPick),
      mediaControls(core, needs.desktop, mediaWindow, needs.splash, needs.adding, transport),
      core_(core), player_(needs.player) {
    mediaWindow.mp3s.controls = mediaControls.list();
}

void Playback::load(const StoredSettings& stored) {
    AppState& state = core_.state;
    state.Timer1.connect(core_.loop, [this] { modeTick.tick(); });
    sliders.restore(stored.get("tempo"), stored.get("volume"));
    loadFlag(state.rep, stored.get("repeat"));
    loadFlag(state.crand, stored.get("shuffle"));
    loadFlag(state.cintz, stored.get("continue"));
    mediaWindow.load(stored);
    counters.show(counters.count(core_.settings.yochoose(Choice::play)));
    player_.setVolume(firstVolume);
}

void Playback::save(SettingsChanges& changes) const {
    const AppState& state = core_.state;
    changes.emplace_back("tempo", std::to_string(state.HScroll3));
    changes.emplace_back("volume", std::to_string(state.HScroll2));
    changes.emplace_back("repeat", yesNo(state.rep));
    changes.emplace_back("shuffle", yesNo(state.crand && !state.rep));
    changes.emplace_back("continue", yesNo(state.cintz && !state.rep && !state.crand));
    mediaWindow.save(changes);
}

void Playback::unload() {
    mediaWindow.mp3s.visible = false;
    transport.close();
}

void Playback::showPosition() {
    if (mediaWindow.isMini() && isPlaying())
        mediaWindow.showPosition();
}

bool Playback::isPlaying() {
    return player_.PlayState() == PlayState::playing;
}

} // namespace larkspin
