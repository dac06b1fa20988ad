#include "playback/play_modes.h"

#include "chat/reply.h"
#include "playback/transport.h"
#include "shell/app_state.h"
#include "shell/menu.h"

namespace larkspin {

void PlayModes::repeat() {
    switchOn(&AppState::rep, "repeat", "repeat");
}
void PlayModes::shuffle() {
    switchOn(&AppState::crand, "shuffle", "shuffled play");
}
void PlayModes::cont() {
    switchOn(&AppState::cintz, "continuous", "continuous play");
}

void PlayModes::repeatoff() {
    switchOff(&AppState::rep, "repeat");
}
void PlayModes::soff() {
    switchOff(&AppState::crand, "shuffled play");
}
void PlayModes::contoff() {
    switchOff(&AppState::cintz, "continuous play");
}

void PlayModes::switchOn(bool AppState::*mode, const std::string& word, const std::string& label) {
    if (reply_.refusedInSilence("to use " + word +
                                " in silent mode, go to player ops in the system tray menu"))
        return;
    reply_.saychat(label + " - <b>on");
    choose(mode);
}

void PlayModes::choose(bool AppState::*mode) {
    state_.rep = state_.crand = state_.cintz = false;
    state_.*mode = true;
    // The tick looks for the end of a song, so without one it waits for the next start.
    if (!transport_.nothingLoaded())
        state_.Timer1.enable();
}

void PlayModes::set(bool AppState::*mode, bool on) {
    if (state_.*mode != on)
        toggle(mode);
}

void PlayModes::toggle(bool AppState::*mode) {
    if (!(state_.*mode)) {
        choose(mode);
        return;
    }
    state_.Timer1.disable();
    state_.*mode = false;
}

MenuEntry PlayModes::repeatEntry() {
    return {.name = "rep",
            .caption = "repeat",
            .action = [this] { toggle(&AppState::rep); },
            .checked = state_.rep};
}
MenuEntry PlayModes::continuousEntry() {
    return {.name = "cintz",
            .caption = "continuous",
            .action = [this] { toggle(&AppState::cintz); },
            .checked = state_.cintz};
}
MenuEntry PlayModes::shuffleEntry() {
    return {.name = "crand",
            .caption = "shuffle",
            .action = [this] { toggle(&AppState::crand); },
            .checked = state_.crand};
}

void PlayModes::switchOff(bool AppState::*mode, const std::string& label) {
    if (reply_.silentguard())
        return;
    if (!(state_.*mode)) {
        reply_.saychat(label + " not on, genius");
        return;
    }
    state_.Timer1.disable();
    state_.*mode = false;
    reply_.saychat(label + " - <b>off");
}

} // namespace larkspin
