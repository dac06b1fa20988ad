// The three play modes, of which at most one is on: repeat, shuffle, continuous. The commands
// that switch them; what a mode does stands in the mode tick.
#pragma once

#include "chat/core.h"

#include <string>

namespace larkspin {

struct MenuEntry;
class Transport;

class PlayModes {
public:
    PlayModes(const Core& core, Transport& transport)
        : state_(core.state), reply_(core.reply), transport_(transport) {}

    void repeat();
    void shuffle();
    void cont();

    void repeatoff();
    void soff();
    void contoff();

    // Switches one of the modes (`rep`, `crand`, `cintz`) on or off. Says nothing, and works in
    // silent mode too.
    void set(bool AppState::*mode, bool on);

    // The tray's entries, which do that.
    MenuEntry repeatEntry();
    MenuEntry continuousEntry();
    MenuEntry shuffleEntry();

private:
    void choose(bool AppState::*mode);
    void toggle(bool AppState::*mode);
    void switchOn(bool AppState::*mode, const std::string& word, const std::string& label);
    void switchOff(bool AppState::*mode, const std::string& label);

    AppState& state_;
    Reply& reply_;
    Transport& transport_;
};

} // namespace larkspin
